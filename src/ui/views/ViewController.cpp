#include "ui/views/ViewController.h"

#include "platform/Fatal.h"

namespace ui {

ViewController::~ViewController()
{
    delete loadedView.data();
}

QWidget& ViewController::view()
{
    if (loadedView.isNull()) {
        loadedView = loadView().release();
        if (loadedView.isNull()) {
            platform::fatal("a view could not be loaded");
        }
        viewDidLoad();
    }
    return *loadedView;
}

} // namespace ui
