#include "data/rescue_state.h"

#include <algorithm>
#include <cstring>

#include "data/same_value.h"
#include "mervane/values/text_codec.h"

namespace {

constexpr std::string_view kMagic = "QJRESCUE";
constexpr uint32_t kVersion = 2;
constexpr size_t kHeaderSize = 24; // magic, version, size and number of what follows
constexpr uint8_t kHasCategories = 1;

// Version 1 had the values of these alone, in this order, without their identifiers.
constexpr uint32_t kVersion1 = 1;
constexpr CEPROPID kValuesOfVersion1[] = {kPropDate,        kPropEndTime, kPropDuration, kPropPriority,
                                          kPropSensitivity, kPropType,    kPropSubject,  kPropBody};

class Writer {
  public:
    // Little-endian, as the machines are.
    template <typename Number> void Add(Number number)
    {
        m_bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
    void Add(const std::wstring& text)
    {
        const std::string encoded = mervane::EncodeText(text);
        Add(static_cast<uint32_t>(encoded.size()));
        m_bytes += encoded;
    }
    void Add(TimeCount time) { Add(time.Units()); }
    void Add(const CEBLOB&) {} // a set is added by itself
    void Add(const std::vector<CEOID>& ids)
    {
        Add(static_cast<uint32_t>(ids.size()));
        for (const CEOID id : ids)
            Add(uint32_t{id});
    }
    const std::string& Bytes() const { return m_bytes; }

  private:
    std::string m_bytes;
};

// Once something is not there, all that follows is not, and nothing is taken beyond the end.
class Reader {
  public:
    explicit Reader(std::string_view bytes) : m_rest(bytes) {}

    std::string_view Take(size_t size)
    {
        m_isWhole = m_isWhole && size <= m_rest.size();
        if (!m_isWhole)
            return {};
        const std::string_view taken = m_rest.substr(0, size);
        m_rest.remove_prefix(size);
        return taken;
    }
    template <typename Number> Number Get()
    {
        Number number{};
        const std::string_view bytes = Take(sizeof number);
        if (m_isWhole)
            memcpy(&number, bytes.data(), sizeof number);
        return number;
    }
    template <typename Number> void Read(Number* number) { *number = Get<Number>(); }
    void Read(TimeCount* time) { *time = TimeCount(Get<uint64_t>()); }
    void Read(std::wstring* text) { *text = mervane::DecodeText(Take(Get<uint32_t>())); }
    void Read(CEBLOB*) {}
    std::vector<CEOID> GetIds()
    {
        std::vector<CEOID> ids;
        for (uint32_t left = Get<uint32_t>(); left > 0 && m_isWhole; --left)
            if (const CEOID id = Get<uint32_t>())
                ids.push_back(id);
        return ids;
    }
    bool IsAtEnd() const { return m_isWhole && m_rest.empty(); }
    std::string_view Rest() const { return m_rest; }

  private:
    std::string_view m_rest;
    bool m_isWhole = true;
};

// Each behind its identifier, so that a field which is new needs no other format.
void AddValues(const EntryToWrite& entry, Writer* out)
{
    out->Add(static_cast<uint32_t>(std::ranges::count_if(Fields(), IsPlainValue)));
    for (const Field& field : Fields())
        if (IsPlainValue(field)) {
            out->Add(uint32_t{field.id});
            std::visit([&](auto member) { out->Add(entry.*member); }, field.written);
        }
}

// False for a field that is not known: a newer program's, who can keep it.
bool ReadValue(CEPROPID id, Reader* in, EntryToWrite* entry)
{
    const Field* field = FieldOf(id);
    if (!field || !IsPlainValue(*field))
        return false;
    std::visit([&](auto member) { in->Read(&(entry->*member)); }, field->written);
    return true;
}

bool ReadValues(uint32_t version, Reader* in, EntryToWrite* entry)
{
    const auto read = [&](CEPROPID id) { return ReadValue(id, in, entry); };
    if (version == kVersion1)
        return std::ranges::all_of(kValuesOfVersion1, read);
    for (auto left = in->Get<uint32_t>(); left > 0; --left)
        if (!read(in->Get<uint32_t>()))
            return false;
    return true;
}

std::string Content(const RescueState& state)
{
    Writer out;
    out.Add(state.store);
    out.Add(uint32_t{state.id});
    out.Add(state.image);
    AddValues(state.entry, &out);
    out.Add(state.categories ? kHasCategories : uint8_t{0});
    out.Add(state.categories.value_or(std::vector<CEOID>()));
    out.Add(state.contacts);
    return out.Bytes();
}

} // namespace

uint64_t NumberOfBytes(std::string_view bytes)
{
    uint64_t number = 0xCBF29CE484222325;
    for (const char byte : bytes)
        number = (number ^ static_cast<uint8_t>(byte)) * 0x100000001B3;
    return number;
}

std::string RescueBytes(const RescueState& state)
{
    const std::string content = Content(state);
    if (content.size() > kRescueSizeLimit - kHeaderSize)
        return {};
    Writer header;
    header.Add(kVersion);
    header.Add(static_cast<uint32_t>(content.size()));
    header.Add(NumberOfBytes(content));
    return std::string(kMagic) + header.Bytes() + content;
}

std::optional<RescueState> ReadRescue(std::string_view bytes)
{
    Reader in(bytes);
    if (bytes.size() > kRescueSizeLimit || in.Take(kMagic.size()) != kMagic)
        return std::nullopt;
    const auto version = in.Get<uint32_t>();
    if (version < kVersion1 || version > kVersion || in.Get<uint32_t>() != bytes.size() - kHeaderSize)
        return std::nullopt;
    const auto number = in.Get<uint64_t>();
    if (NumberOfBytes(in.Rest()) != number)
        return std::nullopt;
    RescueState state;
    state.store = in.Get<uint64_t>();
    state.id = in.Get<uint32_t>();
    state.image = in.Get<uint64_t>();
    if (!ReadValues(version, &in, &state.entry))
        return std::nullopt;
    const auto flags = in.Get<uint8_t>();
    std::vector<CEOID> categories = in.GetIds();
    if (flags & kHasCategories)
        state.categories = std::move(categories);
    state.contacts = in.GetIds();
    return in.IsAtEnd() ? std::optional(std::move(state)) : std::nullopt;
}
