#include "seeded.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

namespace fuzz {

namespace {

uint64_t FromEnvironment(const char* name, uint64_t usual)
{
    const char* value = getenv(name);
    return value ? strtoull(value, nullptr, 10) : usual;
}

size_t PlaceIn(const std::string& bytes, Chance& chance)
{
    return chance.Below(bytes.size() + 1);
}

std::string PieceOf(const std::string& bytes, Chance& chance)
{
    constexpr size_t kLongest = 80;
    return bytes.substr(PlaceIn(bytes, chance), 1 + chance.Below(kLongest));
}

std::string Strange(Chance& chance)
{
    static const std::vector<std::string> kStrange = {std::string(1, '\0'),
                                                      "\xFF",
                                                      "\x80",
                                                      "\xED\xA0\x80",
                                                      "\xF0\x9F\x98\x80",
                                                      "\xEF\xBB\xBF",
                                                      "\r",
                                                      "\n",
                                                      "\r\n ",
                                                      "\"",
                                                      "=",
                                                      "=\r\n",
                                                      "\\",
                                                      ";",
                                                      ":",
                                                      ",",
                                                      "<",
                                                      ">",
                                                      "</",
                                                      "&",
                                                      "&#",
                                                      "999999999999999999",
                                                      "-1",
                                                      "\t",
                                                      "'",
                                                      "^n",
                                                      "<!--",
                                                      "%s%n"};
    return chance.Pick(kStrange);
}

void ChangeOnce(std::string& bytes, const std::vector<std::string>& samples, Chance& chance)
{
    const size_t place = PlaceIn(bytes, chance);
    switch (chance.Below(8)) {
    case 0: bytes.insert(place, Strange(chance)); break;
    case 1: bytes.erase(place, 1 + chance.Below(chance.OneIn(4) ? bytes.size() + 1 : 8)); break;
    case 2: bytes.insert(place, PieceOf(bytes, chance)); break;
    case 3: bytes.insert(place, PieceOf(chance.Pick(samples), chance)); break;
    case 4: bytes.resize(chance.OneIn(4) ? place : bytes.size()); break;
    case 5: bytes.insert(place, chance.Bytes(1 + chance.Below(4))); break;
    case 6: bytes.replace(place, chance.Below(20), PieceOf(chance.Pick(samples), chance)); break;
    default:
        if (place < bytes.size())
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << chance.Below(8)));
    }
}

} // namespace

size_t CasesOr(size_t usual)
{
    return static_cast<size_t>(FromEnvironment("FUZZ_CASES", usual));
}

uint64_t Seed()
{
    return FromEnvironment("FUZZ_SEED", 1);
}

std::string Chance::Bytes(size_t size)
{
    std::string bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [this] { return static_cast<char>(Bits()); });
    return bytes;
}

uint64_t Chance::Number()
{
    const unsigned bits = static_cast<unsigned>(Below(64));
    switch (Below(4)) {
    case 0: return Below(300);
    case 1: return (uint64_t{1} << bits) + Below(3) - 1;
    case 2: return ~uint64_t{0} - Below(3);
    default: return Bits() >> bits;
    }
}

std::vector<std::string> FilesIn(const std::filesystem::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::stringstream content;
        content << file.rdbuf();
        files[entry.path().filename().string()] = content.str();
    }
    std::vector<std::string> contents;
    for (const auto& file : files)
        contents.push_back(file.second);
    return contents;
}

void Change(std::string& bytes, const std::vector<std::string>& samples, Chance& chance)
{
    for (size_t changes = 1 + chance.Below(8); changes; --changes)
        ChangeOnce(bytes, samples, chance);
}

} // namespace fuzz
