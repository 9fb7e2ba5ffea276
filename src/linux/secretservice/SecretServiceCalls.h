// The few things that are asked of an open Secret Service. All of them wait for its answer; each
// puts the reason into `reason` when it fails. Worker thread.
#pragma once

#include "linux/secretservice/Glib.h"
#include "linux/secretservice/SecretServiceSession.h"

#include <optional>
#include <string>

#include <libsecret/secret.h>

namespace secretservice {

enum class CollectionState
{
    Absent,
    Locked,
    Unlocked,
    Unknown
};

/// Items of our schema with these attributes, or nothing when that cannot be told.
std::optional<ObjectListPtr> searchItems(
    SecretServiceSession& session,
    GHashTable* attributes,
    SecretSearchFlags flags,
    std::string& reason
);

/// The collection that new items go to, empty when there is none; nothing when that cannot be told.
std::optional<ObjectPtr<SecretCollection>>
findDefaultCollection(SecretServiceSession& session, std::string& reason);

CollectionState defaultCollectionState(SecretServiceSession& session, std::string& reason);

std::optional<ObjectListPtr>
findEveryCollection(SecretServiceSession& session, std::string& reason);

/// Unlocks items and collections, through the service's prompt where it wants one. True as well
/// when the prompt was dismissed.
bool unlockObjects(SecretServiceSession& session, GList* objects, std::string& reason);

/// Stores an item in the default collection, which is made, through a prompt, when there is none.
bool storeItem(
    SecretServiceSession& session,
    const std::string& account,
    SecretValue* value,
    std::string& reason
);

bool deleteItem(SecretServiceSession& session, SecretItem* item, std::string& reason);

} // namespace secretservice
