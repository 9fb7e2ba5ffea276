#include "linux/x11/CoverWindow.h"

#include "linux/x11/PlainWindowRequest.h"

namespace x11 {

CoverWindow::CoverWindow(X11Guard& guard, const platform::WindowAttributes& attributes)
    : guard(guard),
      window(xcb_generate_id(guard.connection().get())),
      level(static_cast<int>(attributes.level))
{
    // The guard shows it over the same connection, hence after this request.
    requestPlainWindow(guard.connection(), window, attributes.frame, attributes.backgroundColor);
}

CoverWindow::~CoverWindow()
{
    guard.destroy(window);
}

void CoverWindow::makeKeyAndOrderFront()
{
    guard.show(window, level);
}

void CoverWindow::close()
{
    guard.hide(window);
}

} // namespace x11
