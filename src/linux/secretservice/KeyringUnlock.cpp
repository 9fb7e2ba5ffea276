#include "linux/secretservice/KeyringUnlock.h"

#include "linux/secretservice/GenericPasswordSchema.h"

#include <optional>

namespace secretservice {

namespace {

void keep(ObjectListPtr& list, gpointer object)
{
    list.reset(g_list_prepend(list.release(), g_object_ref(object)));
}

/// Adds the default collection when it is locked.
bool collectDefault(
    SecretServiceSession& session, SecretService* service, ObjectListPtr& locked, Error& error
)
{
    const ObjectPtr<SecretCollection> collection(secret_collection_for_alias_sync(
        service,
        SECRET_COLLECTION_DEFAULT,
        SECRET_COLLECTION_NONE,
        session.cancellable(),
        error.out()
    ));
    if (collection && secret_collection_get_locked(collection.get()) == TRUE) {
        keep(locked, collection.get());
    }
    return !error.isSet();
}

/// Adds the items of ours that are locked; `found` says whether there are any at all.
bool collectItems(
    SecretServiceSession& session,
    SecretService* service,
    ObjectListPtr& locked,
    bool& found,
    Error& error
)
{
    const AttributesPtr attributes = anyAttributes();
    const ObjectListPtr items(secret_service_search_sync(
        service,
        &genericPasswordSchema(),
        attributes.get(),
        SECRET_SEARCH_ALL,
        session.cancellable(),
        error.out()
    ));
    found = static_cast<bool>(items);
    for (GList* node = items.get(); node != nullptr; node = node->next) {
        if (secret_item_get_locked(static_cast<SecretItem*>(node->data)) == TRUE) {
            keep(locked, node->data);
        }
    }
    return !error.isSet();
}

bool collectEveryCollection(
    SecretServiceSession& session, SecretService* service, ObjectListPtr& locked, Error& error
)
{
    if (secret_service_load_collections_sync(service, session.cancellable(), error.out()) != TRUE) {
        return false;
    }
    const ObjectListPtr collections(secret_service_get_collections(service));
    for (GList* node = collections.get(); node != nullptr; node = node->next) {
        if (secret_collection_get_locked(static_cast<SecretCollection*>(node->data)) == TRUE) {
            keep(locked, node->data);
        }
    }
    return true;
}

/// All that has to be unlocked, or nothing when that cannot be told.
std::optional<ObjectListPtr>
collectLocked(SecretServiceSession& session, bool itemsExpected, std::string& reason)
{
    SecretService* service = session.open(reason);
    if (service == nullptr) {
        return std::nullopt;
    }
    ObjectListPtr locked;
    Error error;
    bool found = false;
    bool collected = collectItems(session, service, locked, found, error) &&
                     collectDefault(session, service, locked, error);
    if (collected && itemsExpected && !found && !locked) {
        collected = collectEveryCollection(session, service, locked, error);
    }
    if (!collected) {
        reason = error.message();
        return std::nullopt;
    }
    return locked;
}

} // namespace

Unlocking unlockKeyring(
    SecretServiceSession& session, bool itemsExpected, const Report& report, std::string& reason
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
    SecretService* service = session.open(reason);
    if (service == nullptr) {
        return Unlocking::Failed;
    }
    const std::string askedOwner = session.owner();
    Error error;
    secret_service_unlock_sync(service, locked->get(), session.cancellable(), nullptr, error.out());
    // What counts is not what the prompt says but what is open now.
    const auto stillLocked = collectLocked(session, itemsExpected, reason);
    if (!stillLocked.has_value()) {
        return Unlocking::Failed;
    }
    if (!*stillLocked) {
        return Unlocking::Open;
    }
    if (error.isSet() || session.owner() != askedOwner) {
        reason = error.message();
        return Unlocking::Failed;
    }
    return Unlocking::StaysLocked;
}

} // namespace secretservice
