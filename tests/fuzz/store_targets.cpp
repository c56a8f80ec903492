// The values of the store: blobs of identifiers, texts, and patterns that are looked for in them.
#include <algorithm>
#include <cstring>
#include <set>

#include "mervane/search/case_folding.h"
#include "mervane/search/text_pattern.h"
#include "mervane/values/id_blob.h"
#include "mervane/values/text_codec.h"
#include "targets.h"

namespace fuzz {

namespace {

using namespace mervane;

// By the words of the contract alone: as many as are counted and wholly there, each once, never 0.
std::vector<CEOID> ExpectedIds(std::string_view bytes)
{
    std::vector<CEOID> ids;
    std::set<CEOID> seen{0};
    uint32_t count = 0;
    if (bytes.size() >= sizeof count)
        memcpy(&count, bytes.data(), sizeof count);
    for (size_t end = 8; count-- && end <= bytes.size(); end += 4) {
        CEOID id;
        memcpy(&id, bytes.data() + end - 4, sizeof id);
        if (seen.insert(id).second)
            ids.push_back(id);
    }
    return ids;
}

std::vector<char32_t> CharactersOf(std::string_view text)
{
    std::vector<char32_t> codes;
    const std::wstring units = DecodeText(text);
    for (size_t i = 0; i < units.size(); ++i) {
        const char32_t unit = units[i], next = i + 1 < units.size() ? units[i + 1] : 0;
        const bool isPair = unit >= 0xD800 && unit <= 0xDBFF && next >= 0xDC00 && next <= 0xDFFF;
        codes.push_back(isPair ? 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00) : unit);
        i += isPair ? 1 : 0;
    }
    return codes;
}

bool IsIn(std::vector<char32_t> text, std::vector<char32_t> wanted, bool matchCase)
{
    if (!matchCase) {
        std::transform(text.begin(), text.end(), text.begin(), FoldCase);
        std::transform(wanted.begin(), wanted.end(), wanted.begin(), FoldCase);
    }
    return std::search(text.begin(), text.end(), wanted.begin(), wanted.end()) != text.end() ||
           wanted.empty();
}

std::string TryCharacters(std::string_view text)
{
    std::vector<char32_t> stepped;
    const std::string_view whole = text.substr(0, text.find('\0'));
    for (size_t at = 0; at < whole.size();) {
        const DecodedCharacter character = DecodeCharacter(whole, at);
        if (character.length == 0 || at + character.length > whole.size())
            return "a character reaches beyond its text";
        stepped.push_back(character.code);
        at += character.length;
    }
    return stepped == CharactersOf(text) ? "" : "a text read by characters is another one";
}

} // namespace

std::string TryIdBlob(std::string_view bytes)
{
    std::string copy(bytes);
    const CEBLOB blob{static_cast<DWORD>(copy.size()), reinterpret_cast<BYTE*>(copy.data())};
    const IdBlob read = ReadIdBlob(blob);
    if (read.ids != ExpectedIds(bytes))
        return "a blob reads as other identifiers";
    CEBLOB made;
    if (!MakeIdBlob(read.ids, &made))
        return "no blob was made";
    const IdBlob again = ReadIdBlob(made);
    const bool isSame = again.rightShape && again.ids == read.ids;
    LocalFree(made.lpb);
    if (!isSame)
        return "a blob that was made reads as other identifiers";
    std::vector<CEOID> wanted = {1, 2, 0x01010101, 0xFFFFFFFF};
    if (!read.ids.empty())
        wanted.push_back(read.ids.back());
    std::sort(wanted.begin(), wanted.end());
    const bool holds = std::any_of(read.ids.begin(), read.ids.end(), [&](CEOID id) {
        return std::find(wanted.begin(), wanted.end(), id) != wanted.end();
    });
    return holds == HoldsAnyId(blob, wanted) ? "" : "a blob holds other identifiers than it reads as";
}

std::string TryTexts(std::string_view bytes)
{
    const size_t length = bytes.empty() ? 0 : std::min<size_t>(bytes.size() - 1, bytes[0] & 0x0F);
    const std::string_view given = bytes.substr(bytes.empty() ? 0 : 1);
    const std::string_view stored = given.substr(length);
    const std::wstring text = DecodeText(stored), wanted = DecodeText(given.substr(0, length));
    if (DecodeText(EncodeText(text)) != text)
        return "a text comes back from the store as another one";
    const std::string broken = TryCharacters(stored);
    if (!broken.empty())
        return broken;
    for (const bool matchCase : {false, true})
        if (TextPattern(wanted, matchCase).IsIn(stored) !=
            IsIn(CharactersOf(stored), CharactersOf(given.substr(0, length)), matchCase))
            return "a text is found where it is not, or not where it is";
    return {};
}

} // namespace fuzz
