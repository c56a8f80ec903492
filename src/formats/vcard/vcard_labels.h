// The addresses' labels, which before version 4.0 were lines of their own.
#pragma once

#include "formats/vcard/vcard_card.h"

namespace addrbook {

// Makes each LABEL line the LABEL parameter of the address line of the same group and parameters that has
// none yet, or of an address of its own without parts.
void JoinLabels(VCard* card);

} // namespace addrbook
