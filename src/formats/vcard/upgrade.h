// Lines of versions 2.1 and 3.0 brought to the form of version 4.0, one by one, while they are read.
#pragma once

#include <string>

#include "formats/vcard/card.h"

namespace vcard {

enum class Version { V21, V30, V40 };

// Whether the line is as version 4.0 writes it; if not, *upgraded is that line, unfolded. What has an
// encoding loses it: quoted-printable becomes text, bytes in base 64 a "data:" address; a character set
// becomes UTF-8.
[[nodiscard]] bool IsCurrent(const Card::Line& line, Version version, std::string* upgraded);

} // namespace vcard
