#include "ui/views/ViewController.h"

#include "platform/Fatal.h"
#include "ui/views/FormButtons.h"

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
        FormButtons::install(*loadedView);
        viewDidLoad();
    }
    return *loadedView;
}

} // namespace ui
