#include "addrbook/transfer/reach_merge.h"

#include <unordered_map>
#include <vector>

namespace addrbook {

namespace {

std::string KeyOf(vcard::Property property, std::string_view reach)
{
    std::string digits, small;
    for (const char character : vcard::WithoutKinds(reach)) {
        if ((character >= '0' && character <= '9') || character == '+')
            digits += character;
        small += character >= 'A' && character <= 'Z' ? static_cast<char>(character + 32) : character;
    }
    return property == vcard::Property::Phone && !digits.empty() ? digits : small;
}

std::vector<std::string_view> ListOf(const std::string& text)
{
    std::vector<std::string_view> list;
    vcard::ForEachLine(text, [&](std::string_view line) { list.push_back(line); });
    return list;
}

// The places of texts in a list, each of which is taken once.
class Places {
  public:
    template <typename Key> Places(const std::vector<std::string_view>& list, Key key)
    {
        for (size_t i = list.size(); i-- > 0;)
            m_places[key(list[i])].push_back(i);
    }
    // The first one of this key that is not taken yet; npos for none.
    size_t Take(const std::string& key, std::vector<bool>* taken)
    {
        const auto found = m_places.find(key);
        while (found != m_places.end() && !found->second.empty()) {
            const size_t place = found->second.back();
            found->second.pop_back();
            if (!(*taken)[place]) {
                (*taken)[place] = true;
                return place;
            }
        }
        return std::string::npos;
    }

  private:
    std::unordered_map<std::string, std::vector<size_t>> m_places;
};

std::string WithKindsOf(std::string_view reach, std::string_view stored)
{
    const bool hasKinds = vcard::WithoutKinds(reach).size() < reach.size();
    return std::string(reach) +
           std::string(hasKinds ? "" : stored.substr(vcard::WithoutKinds(stored).size()));
}

void Append(std::string& out, std::string_view line)
{
    out.append(out.empty() ? "" : "\n").append(line);
}

} // namespace

std::string MergedReaches(vcard::Property property, const std::string& stored, const std::string& card)
{
    const std::vector<std::string_view> before = ListOf(stored), told = ListOf(card);
    std::vector<bool> taken(told.size());
    std::vector<size_t> place(before.size());
    // What is there to the letter is itself before another one of the same number is.
    Places equal(told, [](std::string_view text) { return std::string(text); });
    Places same(told, [&](std::string_view text) { return KeyOf(property, text); });
    for (size_t i = 0; i < before.size(); ++i)
        place[i] = equal.Take(std::string(before[i]), &taken);
    std::string merged;
    for (size_t i = 0; i < before.size(); ++i) {
        if (place[i] == std::string::npos)
            place[i] = same.Take(KeyOf(property, before[i]), &taken);
        Append(merged, place[i] == std::string::npos ? std::string(before[i])
                                                     : WithKindsOf(told[place[i]], before[i]));
    }
    for (size_t i = 0; i < told.size(); ++i)
        if (!taken[i])
            Append(merged, told[i]);
    return merged;
}

} // namespace addrbook
