// Makes a catalogue of what is installed now. Any thread may call.
#pragma once

#include "linux/xdg/Catalogue.h"
#include "linux/xdg/Roles.h"
#include "linux/xdg/XdgEnvironment.h"

#include <memory>

namespace xdg {

/// Never empty.
std::shared_ptr<const Catalogue>
buildCatalogue(const XdgEnvironment& environment, const Roles& roles);

/// The folders whose changes can make it out of date, those that are missing included.
std::set<std::string> catalogueFolders(const XdgEnvironment& environment);

} // namespace xdg
