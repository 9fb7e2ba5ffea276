#include "linux/secretservice/KeyringUnlock.h"

#include "linux/secretservice/GenericPasswordSchema.h"
#include "linux/secretservice/SecretServiceCalls.h"

#include <optional>

namespace secretservice {

namespace {

void keep(ObjectListPtr& list, gpointer object)
{
    list.reset(g_list_prepend(list.release(), g_object_ref(object)));
}

void keepLockedCollections(ObjectListPtr& list, GList* collections)
{
    for (GList* node = collections; node != nullptr; node = node->next) {
        if (secret_collection_get_locked(static_cast<SecretCollection*>(node->data)) == TRUE) {
            keep(list, node->data);
        }
    }
}

void keepLockedItems(ObjectListPtr& list, GList* items)
{
    for (GList* node = items; node != nullptr; node = node->next) {
        if (secret_item_get_locked(static_cast<SecretItem*>(node->data)) == TRUE) {
            keep(list, node->data);
        }
    }
}

/// All that has to be unlocked, or nothing when that cannot be told.
std::optional<ObjectListPtr>
collectLocked(SecretServiceSession& session, bool itemsExpected, std::string& reason)
{
    if (session.open(reason) == nullptr) {
        return std::nullopt;
    }
    const AttributesPtr attributes = anyAttributes();
    const auto items = searchItems(session, attributes.get(), SECRET_SEARCH_ALL, reason);
    if (!items.has_value()) {
        return std::nullopt;
    }
    const auto collection = findDefaultCollection(session, reason);
    if (!collection.has_value()) {
        return std::nullopt;
    }
    ObjectListPtr locked;
    keepLockedItems(locked, items->get());
    if (*collection && secret_collection_get_locked(collection->get()) == TRUE) {
        keep(locked, collection->get());
    }
    if (*items || locked || !itemsExpected) {
        return locked;
    }
    const auto collections = findEveryCollection(session, reason);
    if (!collections.has_value()) {
        return std::nullopt;
    }
    keepLockedCollections(locked, collections->get());
    return locked;
}

} // namespace

Unlocking unlockKeyring(
    SecretServiceSession& session,
    bool itemsExpected,
    const platform::Report& report,
    std::string& reason
)
{
    const auto locked = collectLocked(session, itemsExpected, reason);
    if (!locked.has_value()) {
        return Unlocking::Failed;
    }
    if (!*locked) {
        return Unlocking::Open;
    }
    report("the keyring is locked; waiting until its prompt is answered");
    const bool asked = unlockObjects(session, locked->get(), reason);
    // What counts is not what the prompt says but what is open now.
    const auto stillLocked = collectLocked(session, itemsExpected, reason);
    if (stillLocked.has_value() && !*stillLocked) {
        return Unlocking::Open;
    }
    return asked && stillLocked.has_value() ? Unlocking::StaysLocked : Unlocking::Failed;
}

} // namespace secretservice
