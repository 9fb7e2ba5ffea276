// Another program's item in the keyring, of another schema.
//   foreign_item store SECRET      stores it
//   foreign_item holds SECRET      exits with 0 exactly when it is there and holds that
#include <span>
#include <string>
#include <string_view>

#include <libsecret/secret.h>

namespace {

bool store(const char* secret)
{
    return secret_password_store_sync(
               SECRET_SCHEMA_NOTE,
               SECRET_COLLECTION_DEFAULT,
               "a note",
               secret,
               nullptr,
               nullptr,
               nullptr
           ) == TRUE;
}

bool holds(std::string_view secret)
{
    gchar* found = secret_password_lookup_sync(SECRET_SCHEMA_NOTE, nullptr, nullptr, nullptr);
    const bool same = found != nullptr && secret == found;
    secret_password_free(found);
    return same;
}

} // namespace

int main(int argc, char** argv)
{
    const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
    const bool storing = std::string_view(arguments[1]) == "store";
    return (storing ? store(arguments[2]) : holds(arguments[2])) ? 0 : 1;
}
