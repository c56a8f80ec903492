// The addresses' labels, which before version 4.0 were lines of their own and are a parameter since (RFC
// 6350, 6.3.1).
#pragma once

#include "formats/vcard/card.h"

namespace vcard {

// Makes each LABEL line the LABEL parameter of the address line of the same group and parameters that has
// none yet, or of an address of its own without parts.
void JoinLabels(Card* card);

} // namespace vcard
