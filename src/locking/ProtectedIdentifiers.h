// Whom the settings protect. Main thread.
#pragma once

#include "storage/ConfigurationAndPreferencesService.h"

#include <optional>
#include <set>
#include <string>

namespace locking {

/// Identifiers of the chosen applications, and of the administrative ones where those are
/// protected, too, installed or not. Nothing where the settings do not answer.
std::optional<std::set<std::string>>
protectedIdentifiers(storage::ConfigurationAndPreferencesService& settings);

} // namespace locking
