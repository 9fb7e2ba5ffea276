// The toolkit's application with the look of the program, as `main` makes it.
#pragma once

#include "qt/QtEnvironment.h"
#include "ui/views/Theme.h"

#include <QApplication>
#include <QFont>

namespace support {

class ThemedApplication : public QApplication
{
public:
    ThemedApplication(int& argumentCount, char** arguments) : QApplication(argumentCount, arguments)
    {
        ui::Theme::install(*this);
    }
};

using ThemedEnvironment = QtEnvironment<ThemedApplication>;

/// While it lives, texts are that much larger than the desktop's.
class LargerType
{
public:
    explicit LargerType(double factor) : before(QApplication::font())
    {
        QFont larger = before;
        larger.setPointSizeF(before.pointSizeF() * factor);
        use(larger);
    }

    LargerType(const LargerType&) = delete;
    LargerType& operator=(const LargerType&) = delete;
    LargerType(LargerType&&) = delete;
    LargerType& operator=(LargerType&&) = delete;

    ~LargerType() { use(before); }

private:
    static void use(const QFont& font)
    {
        QApplication::setFont(font);
        ui::Theme::install(*qobject_cast<QApplication*>(QCoreApplication::instance()));
    }

    QFont before;
};

} // namespace support
