// Owners for what GLib hands out. One thread at a time.
#pragma once

#include <memory>
#include <string>

#include <gio/gio.h>

namespace secretservice {

template <auto RELEASE> struct Release
{
    template <class T> void operator()(T* held) const { RELEASE(held); }
};

template <class T> using ObjectPtr = std::unique_ptr<T, Release<g_object_unref>>;
using VariantPtr = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using AttributesPtr = std::unique_ptr<GHashTable, Release<g_hash_table_unref>>;

struct ReleaseObjects
{
    void operator()(GList* objects) const { g_list_free_full(objects, g_object_unref); }
};

/// A list that owns the objects in it.
using ObjectListPtr = std::unique_ptr<GList, ReleaseObjects>;

/// Place for one error.
class Error
{
public:
    Error() = default;

    ~Error() { g_clear_error(&error); }

    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;
    Error(Error&&) = delete;
    Error& operator=(Error&&) = delete;

    /// Where a call puts its error; forgets an earlier one.
    GError** out()
    {
        g_clear_error(&error);
        return &error;
    }

    [[nodiscard]] bool isSet() const { return error != nullptr; }

    [[nodiscard]] bool isTimeout() const
    {
        return g_error_matches(error, G_IO_ERROR, G_IO_ERROR_TIMED_OUT) == TRUE;
    }

    /// As the end of a sentence, without the bus's own name for it.
    [[nodiscard]] std::string message() const
    {
        if (error == nullptr) {
            return "gives no reason";
        }
        const std::unique_ptr<GError, Release<g_error_free>> copy(g_error_copy(error));
        g_dbus_error_strip_remote_error(copy.get());
        return std::string("cannot be used: ") + copy->message;
    }

private:
    GError* error = nullptr;
};

} // namespace secretservice
