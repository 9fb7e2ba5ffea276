// The pictures that the program carries with it, by name. They are vector drawings, sharp at any
// scale. Main thread only.
#pragma once

#include <QIcon>
#include <QString>

namespace ui {

/// Path of the picture among the resources, ":/images/NAME.svg", whether or not there is one.
QString imagePath(const QString& name);

/// The picture of that name; a null icon where there is none.
QIcon imageNamed(const QString& name);

/// The picture of that name. Fatal where there is none.
QIcon requiredImage(const QString& name);

} // namespace ui
