#include "ztpdsdb/ZtPdsDbUri.h"

bool ZtPdsDbIsPostgresUri(std::string_view source) {
    return source.starts_with("postgresql://") || source.starts_with("postgres://");
}

std::string ZtPdsDbUriWithoutPassword(std::string_view uri) {
    const std::size_t scheme = uri.find("://");
    if (scheme == std::string_view::npos)
        return std::string(uri);
    const std::size_t hostStart = scheme + 3;
    const std::size_t authorityEnd = uri.find_first_of("/?", hostStart);
    const std::string_view authority =
        uri.substr(hostStart, authorityEnd == std::string_view::npos ? std::string_view::npos
                                                                     : authorityEnd - hostStart);
    std::string out(uri.substr(0, hostStart));
    if (const std::size_t at = authority.rfind('@'); at != std::string_view::npos) {
        const std::string_view user = authority.substr(0, at);
        out += user.substr(0, user.find(':'));
        out += authority.substr(at);
    } else {
        out += authority;
    }
    if (authorityEnd == std::string_view::npos)
        return out;
    const std::string_view rest = uri.substr(authorityEnd);
    const std::size_t query = rest.find('?');
    out += rest.substr(0, query);
    if (query == std::string_view::npos)
        return out;
    // The query's parameters, but for the password.
    char separator = '?';
    std::string_view parameters = rest.substr(query + 1);
    while (!parameters.empty()) {
        const std::size_t end = parameters.find('&');
        const std::string_view parameter = parameters.substr(0, end);
        if (!parameter.empty() && !parameter.starts_with("password=") && parameter != "password") {
            out += separator;
            out += parameter;
            separator = '&';
        }
        if (end == std::string_view::npos)
            break;
        parameters.remove_prefix(end + 1);
    }
    return out;
}
