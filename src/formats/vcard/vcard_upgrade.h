// Lines of the older versions brought to the form of version 4.0.
#pragma once

#include <string>

#include "formats/vcard/vcard_card.h"

namespace addrbook {

enum class VCardVersion { V21, V30, V40 };

// Whether the line is as version 4.0 writes it; if not, *upgraded is that line, unfolded. What has an
// encoding loses it: quoted-printable becomes text, bytes in base 64 a "data:" address; a character set
// becomes UTF-8.
[[nodiscard]] bool IsCurrent(const VCard::Line& line, VCardVersion version, std::string* upgraded);

} // namespace addrbook
