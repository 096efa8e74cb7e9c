#pragma once
#include <string>
#include <string_view>

// True for a PostgreSQL connection URI: one that begins "postgresql://" or "postgres://".
bool ZtPdsDbIsPostgresUri(std::string_view source);

// The URI without its password, to be shown: the password of the user part
// ("user:secret@") and a "password" parameter of the query part are left out.
std::string ZtPdsDbUriWithoutPassword(std::string_view uri);
