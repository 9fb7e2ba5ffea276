#include "linux/secretservice/GenericPasswordSchema.h"

namespace secretservice {

const SecretSchema& genericPasswordSchema()
{
    static const SecretSchema schema = {
        "com.quorvent.Tarvel.GenericPassword",
        SECRET_SCHEMA_NONE,
        {{ACCOUNT_ATTRIBUTE, SECRET_SCHEMA_ATTRIBUTE_STRING}},
        0,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr,
        nullptr};
    return schema;
}

AttributesPtr accountAttributes(const std::string& account)
{
    AttributesPtr attributes = anyAttributes();
    g_hash_table_insert(attributes.get(), g_strdup(ACCOUNT_ATTRIBUTE), g_strdup(account.c_str()));
    return attributes;
}

AttributesPtr anyAttributes()
{
    return AttributesPtr(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free));
}

} // namespace secretservice
