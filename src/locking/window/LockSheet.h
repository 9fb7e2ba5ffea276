// The style sheet of the lock window: its text colours and the bare boxes of its labels and field.
// A sheet of the whole program goes before palettes and measures; this one goes before it, so that
// the lock looks the same whatever the program's other windows look like.
#pragma once

#include <QString>

class QSize;

namespace locking {

/// `field` is the size of the password field.
QString lockSheet(const QSize& field);

} // namespace locking
