// The picture for an application that has none.
#pragma once

#include <QPixmap>

namespace locking {

/// A padlock in a square of `side` pixels of the device.
QPixmap padlockIcon(int side);

} // namespace locking
