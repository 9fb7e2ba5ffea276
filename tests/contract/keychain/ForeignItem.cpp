// Another program's item in the keyring, of another schema.
//   foreign_item store SECRET      stores it
//   foreign_item holds SECRET      exits with 0 exactly when it is there and holds that
// Or a second item of an account of Tarvel's, with an attribute more:
//   foreign_item twin ACCOUNT      stores one that holds "twin"
//   foreign_item no-twin ACCOUNT   exits with 0 exactly when there is none
#include <span>
#include <string>
#include <string_view>

#include <libsecret/secret.h>

namespace {

const SecretSchema TWIN{
    "com.quorvent.Tarvel.GenericPassword",
    SECRET_SCHEMA_NONE,
    {{"account", SECRET_SCHEMA_ATTRIBUTE_STRING}, {"copy", SECRET_SCHEMA_ATTRIBUTE_STRING}},
    0,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr,
    nullptr};

bool storeTwin(const char* account)
{
    return secret_password_store_sync(
               &TWIN,
               SECRET_COLLECTION_DEFAULT,
               "a twin",
               "twin",
               nullptr,
               nullptr,
               "account",
               account,
               "copy",
               "1",
               nullptr
           ) == TRUE;
}

bool hasNoTwin(const char* account)
{
    gchar* found = secret_password_lookup_sync(
        &TWIN, nullptr, nullptr, "account", account, "copy", "1", nullptr
    );
    const bool none = found == nullptr;
    secret_password_free(found);
    return none;
}

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
    const std::string_view wanted(arguments[1]);
    bool done = false;
    if (wanted == "twin") {
        done = storeTwin(arguments[2]);
    } else if (wanted == "no-twin") {
        done = hasNoTwin(arguments[2]);
    } else {
        done = wanted == "store" ? store(arguments[2]) : holds(arguments[2]);
    }
    return done ? 0 : 1;
}
