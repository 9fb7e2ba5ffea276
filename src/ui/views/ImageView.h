// Shows one picture, as large as the view allows, centred. Its accessible name says what the
// picture says; a view without one is decoration.
#pragma once

#include <QIcon>
#include <QWidget>

namespace ui {

class ImageView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString imageName READ imageName WRITE setImageName)

public:
    explicit ImageView(QWidget* parent = nullptr);

    /// Shows the program's own picture of that name. Fatal where there is none.
    void setImageName(const QString& wanted);

    /// Empty where the picture is not one of the program's own.
    QString imageName() const { return name; }

    void setImage(const QIcon& wanted);

    const QIcon& image() const { return icon; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString name;
    QIcon icon;
};

} // namespace ui
