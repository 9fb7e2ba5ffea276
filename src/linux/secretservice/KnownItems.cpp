#include "linux/secretservice/KnownItems.h"

#include <algorithm>
#include <utility>

namespace secretservice {

namespace {

using Kind = PendingWrite::Kind;

bool concerns(const PendingWrite& write, const std::string& account)
{
    return write.kind == Kind::EraseAll || write.account == account;
}

bool outdates(const PendingWrite& newer, const PendingWrite& older)
{
    return newer.kind == Kind::EraseAll ||
           (older.kind != Kind::EraseAll && newer.account == older.account);
}

} // namespace

KnownItems::KnownItems(Items items) : items(std::move(items)) {}

const SecretBytes* KnownItems::find(const std::string& account) const
{
    const auto found = items.find(account);
    return found == items.end() ? nullptr : &found->second;
}

std::uint64_t KnownItems::put(const std::string& account, SecretBytes data)
{
    items[account] = data;
    return enqueue({.kind = Kind::Put, .account = account, .data = std::move(data)});
}

std::uint64_t KnownItems::erase(const std::string& account)
{
    items.erase(account);
    return enqueue({.kind = Kind::Erase, .account = account});
}

std::uint64_t KnownItems::eraseAll()
{
    items.clear();
    return enqueue({.kind = Kind::EraseAll});
}

std::uint64_t KnownItems::enqueue(PendingWrite write)
{
    std::erase_if(pending, [&write](const PendingWrite& older) {
        return !older.started && outdates(write, older);
    });
    write.id = ++lastId;
    pending.push_back(std::move(write));
    return lastId;
}

bool KnownItems::isPending(const std::string& account) const
{
    return std::ranges::any_of(pending, [&account](const PendingWrite& write) {
        return concerns(write, account);
    });
}

bool KnownItems::isPending(std::uint64_t id) const
{
    return std::ranges::any_of(pending, [id](const PendingWrite& write) { return write.id == id; });
}

PendingWrite KnownItems::start()
{
    pending.front().started = true;
    return pending.front();
}

void KnownItems::finish(std::uint64_t id, bool done)
{
    const auto at = std::ranges::find(pending, id, &PendingWrite::id);
    if (at == pending.end()) {
        return;
    }
    at->started = false;
    const bool outdated = std::any_of(at + 1, pending.end(), [&at](const PendingWrite& newer) {
        return outdates(newer, *at);
    });
    if (done || outdated) {
        pending.erase(at);
    }
}

void KnownItems::learn(const std::string& account, const ItemRead& read)
{
    if (isPending(account)) {
        return;
    }
    if (read.state == ItemRead::State::Found) {
        items[account] = read.data;
    } else if (read.state == ItemRead::State::Missing) {
        items.erase(account);
    }
}

void KnownItems::learnAll(const Items& all)
{
    std::erase_if(items, [this](const auto& item) { return !isPending(item.first); });
    for (const auto& [account, data] : all) {
        if (!isPending(account)) {
            items[account] = data;
        }
    }
}

} // namespace secretservice
