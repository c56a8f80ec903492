// Cases by chance: the same seed makes the same ones, on every machine.
#pragma once

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace fuzz {

// FUZZ_CASES and FUZZ_SEED in the environment, for the long forms by hand; else the given number, and 1.
size_t CasesOr(size_t usual);
uint64_t Seed();

class Chance {
  public:
    explicit Chance(uint64_t seed) : m_engine(seed) {}

    size_t Below(size_t limit) { return limit ? m_engine() % limit : 0; }
    bool OneIn(size_t count) { return Below(count) == 0; }
    uint64_t Bits() { return m_engine(); }
    std::string Bytes(size_t size);
    template <typename T> const T& Pick(const std::vector<T>& from) { return from[Below(from.size())]; }
    // A number from the edges of the types, or any.
    uint64_t Number();

  private:
    std::mt19937_64 m_engine;
};

// The contents of all files in a folder, in the order of their names.
std::vector<std::string> FilesIn(const std::filesystem::path& folder);

// Changes a text here and there: bytes, words, pieces of it and of the samples.
void Change(std::string& bytes, const std::vector<std::string>& samples, Chance& chance);

} // namespace fuzz
