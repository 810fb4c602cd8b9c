// By what a page's content-security policy knows the one script and the one style of the page.
#pragma once

#include <string>
#include <string_view>

namespace tonvale {

// "sha256-" and the SHA-256 (FIPS 180-4) of the bytes in base64 (RFC 4648).
std::string ContentHash(std::string_view bytes);

}  // namespace tonvale
