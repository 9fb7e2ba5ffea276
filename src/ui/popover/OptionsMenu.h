// The menu of the popover's content. An entry that is highlighted shows the white twin of its
// picture. Main thread only.
#pragma once

#include <QMenu>

#include <functional>

namespace ui {

class OptionsMenu : public QMenu
{
    Q_OBJECT

public:
    static constexpr int IMAGE_SIDE = 12;

    struct Actions
    {
        std::function<void()> changePreferences;
        std::function<void()> lockAnotherApp;
        std::function<void()> help;
        std::function<void()> quitApplication;
    };

    OptionsMenu(const Actions& actions, QWidget* parent);

    /// The entry is about to be highlighted; nothing where none is.
    void willHighlightItem(QAction* item);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    struct Entry
    {
        const char* title;
        const char* image;
        const char* keyEquivalent;
        std::function<void()> action;
    };

    void add(const Entry& entry);
};

} // namespace ui
