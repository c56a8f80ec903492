#include "data/rescue_state.h"

#include <cstring>

#include "mervane/values/text_codec.h"

namespace {

constexpr std::string_view kMagic = "QJRESCUE";
constexpr uint32_t kVersion = 1;
constexpr size_t kHeaderSize = 24; // magic, version, size and number of what follows
constexpr uint8_t kHasCategories = 1;

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
    TimeCount GetTime() { return TimeCount(Get<uint64_t>()); }
    std::wstring GetText() { return mervane::DecodeText(Take(Get<uint32_t>())); }
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

std::string Content(const RescueState& state)
{
    Writer out;
    out.Add(state.store);
    out.Add(uint32_t{state.id});
    out.Add(state.image);
    for (const TimeCount time : {state.entry.date, state.entry.endTime, state.entry.duration})
        out.Add(time.Units());
    out.Add(state.entry.priority);
    out.Add(state.entry.sensitivity);
    for (const std::wstring* text : {&state.entry.type, &state.entry.subject, &state.entry.body})
        out.Add(*text);
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
    if (bytes.size() > kRescueSizeLimit || in.Take(kMagic.size()) != kMagic ||
        in.Get<uint32_t>() != kVersion || in.Get<uint32_t>() != bytes.size() - kHeaderSize)
        return std::nullopt;
    const auto number = in.Get<uint64_t>();
    if (NumberOfBytes(in.Rest()) != number)
        return std::nullopt;
    RescueState state;
    state.store = in.Get<uint64_t>();
    state.id = in.Get<uint32_t>();
    state.image = in.Get<uint64_t>();
    for (TimeCount* time : {&state.entry.date, &state.entry.endTime, &state.entry.duration})
        *time = in.GetTime();
    state.entry.priority = in.Get<short>();
    state.entry.sensitivity = in.Get<short>();
    for (std::wstring* text : {&state.entry.type, &state.entry.subject, &state.entry.body})
        *text = in.GetText();
    const auto flags = in.Get<uint8_t>();
    std::vector<CEOID> categories = in.GetIds();
    if (flags & kHasCategories)
        state.categories = std::move(categories);
    state.contacts = in.GetIds();
    return in.IsAtEnd() ? std::optional(std::move(state)) : std::nullopt;
}
