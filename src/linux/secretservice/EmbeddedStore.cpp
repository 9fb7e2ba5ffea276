#include "linux/secretservice/EmbeddedStore.h"

#include <algorithm>
#include <utility>

namespace secretservice {

namespace {

using Content = PrivateFolder::Content;

constexpr auto KEY_NAME = "key";
constexpr auto ITEM_SUFFIX = ".item";
constexpr auto CANCELLED = "is being closed";

bool isItem(const std::string& name)
{
    return name.ends_with(ITEM_SUFFIX);
}

std::string damaged(const std::string& name)
{
    return "holds a damaged item, " + name;
}

} // namespace

EmbeddedStore::EmbeddedStore(const std::filesystem::path& path, platform::Report report)
    : folder(path),
      report(std::move(report))
{
}

bool EmbeddedStore::holdsItems(const std::filesystem::path& path)
{
    const auto names = PrivateFolder(path).names();
    return !names.has_value() || std::ranges::any_of(*names, isItem);
}

std::string EmbeddedStore::title() const
{
    return "the keychain folder " + folder.path().string();
}

void EmbeddedStore::cancel() noexcept
{
    cancelled = true;
}

void EmbeddedStore::leaveThread() {}

Failure EmbeddedStore::loadKey()
{
    if (cancelled) {
        return CANCELLED;
    }
    const Content key = folder.read(KEY_NAME);
    if (key.state == Content::State::Failed) {
        return "has a key that " + key.reason;
    }
    if (key.state == Content::State::Missing) {
        const bool used = sealer.has_value() || holdsItems(folder.path());
        return used ? Failure("has lost its key, without which no item can be read") : Failure();
    }
    if (key.bytes.size() != ItemSealer::KEY_SIZE) {
        return "has a damaged key, without which no item can be read";
    }
    sealer.emplace(key.bytes);
    return std::nullopt;
}

Failure EmbeddedStore::makeKey()
{
    if (Failure failure = folder.create(KEY_NAME, ItemSealer::randomKey())) {
        return failure;
    }
    // Another process may have been first; its key is the one that counts.
    return loadKey();
}

ItemRead EmbeddedStore::read(const std::string& account)
{
    using State = ItemRead::State;
    if (const Failure failure = loadKey()) {
        return {.state = State::Failed, .reason = *failure};
    }
    if (!sealer.has_value()) {
        return {.state = State::Missing};
    }
    const std::string name = sealer->name(account) + ITEM_SUFFIX;
    const Content content = folder.read(name);
    if (content.state == Content::State::Missing) {
        return {.state = State::Missing};
    }
    if (content.state == Content::State::Failed) {
        return {.state = State::Failed, .reason = content.reason};
    }
    std::optional<ItemSealer::Item> item = sealer->open(content.bytes);
    if (!item.has_value() || item->account != account) {
        return {.state = State::Failed, .reason = damaged(name)};
    }
    return {.state = State::Found, .data = std::move(item->data)};
}

Failure EmbeddedStore::readAll(Items& items)
{
    if (Failure failure = loadKey()) {
        return failure;
    }
    const auto names = folder.names();
    if (!names.has_value()) {
        return "cannot be looked into";
    }
    if (!sealer.has_value()) {
        items.clear();
        return std::nullopt;
    }
    Items all;
    for (const std::string& name : *names) {
        if (!isItem(name)) {
            continue;
        }
        const Content content = folder.read(name);
        if (content.state != Content::State::Read) {
            return "holds an item, " + name + ", that " + content.reason;
        }
        std::optional<ItemSealer::Item> item = sealer->open(content.bytes);
        if (!item.has_value() || sealer->name(item->account) + ITEM_SUFFIX != name) {
            return damaged(name);
        }
        all.insert_or_assign(item->account, std::move(item->data));
    }
    items = std::move(all);
    return std::nullopt;
}

Failure EmbeddedStore::put(
    const std::string& account, const SecretBytes& data, Prompting /*prompting*/
)
{
    if (Failure failure = loadKey()) {
        return failure;
    }
    if (!sealer.has_value()) {
        if (Failure failure = makeKey()) {
            return failure;
        }
    }
    if (!sealer.has_value()) {
        return "loses its key as soon as it is written";
    }
    const std::string name = sealer->name(account) + ITEM_SUFFIX;
    if (Failure failure = keepIfDamaged(account, name)) {
        return failure;
    }
    return folder.replace(name, sealer->seal(account, data));
}

Failure EmbeddedStore::erase(const std::string& account, Prompting /*prompting*/)
{
    if (Failure failure = loadKey()) {
        return failure;
    }
    if (!sealer.has_value()) {
        return std::nullopt;
    }
    const std::string name = sealer->name(account) + ITEM_SUFFIX;
    if (Failure failure = keepIfDamaged(account, name)) {
        return failure;
    }
    return folder.remove(name);
}

Failure EmbeddedStore::eraseAll(Prompting /*prompting*/)
{
    if (cancelled) {
        return CANCELLED;
    }
    const auto names = folder.names();
    if (!names.has_value()) {
        return "cannot be looked into";
    }
    for (const std::string& name : *names) {
        Failure failure = isItem(name) ? folder.remove(name) : Failure();
        if (failure.has_value()) {
            return failure;
        }
    }
    return std::nullopt;
}

Failure EmbeddedStore::keepIfDamaged(const std::string& account, const std::string& name)
{
    const Content content = folder.read(name);
    if (content.state != Content::State::Read) {
        return std::nullopt;
    }
    const std::optional<ItemSealer::Item> item = sealer->open(content.bytes);
    if (item.has_value() && item->account == account) {
        return std::nullopt;
    }
    report(title() + " " + damaged(name) + "; it is kept beside as *.damaged");
    return folder.setAside(name);
}

} // namespace secretservice
