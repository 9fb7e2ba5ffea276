// The picture of a status item, the same in every area. Main thread only.
#pragma once

#include "platform/StatusBar.h"

#include <QImage>
#include <QSize>

namespace statusbar {

/// The item's image in the middle of `size`, on transparent ground, or on the colour of selected
/// things when highlighted. Premultiplied. An image that cannot be read leaves the ground empty.
QImage itemPicture(const platform::StatusItemLook& look, QSize size);

} // namespace statusbar
