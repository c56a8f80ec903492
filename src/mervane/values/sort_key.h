// The order of texts: the user's locale without regard to case, as bytes that compare with memcmp.
#pragma once

#include <string>
#include <string_view>

namespace mervane {

class SortKeyMaker {
  public:
    // Empty for the empty text. Borrowed until the next call.
    std::string_view Make(std::wstring_view text);

  private:
    std::string m_buffer;
};

} // namespace mervane
