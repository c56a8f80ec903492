// What is done with bytes from outside, each as one function: the same ones are run by the fuzzer on this
// side and by the seeded cases under Wine.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace fuzz {

// Reads the bytes as the program would, uses what came of them, and looks whether all that the readers
// promise holds. The answer names the first promise that is broken; empty when all are kept.
std::string TryVCards(std::string_view bytes);
std::string TryHelpPage(std::string_view bytes);
std::string TryIdBlob(std::string_view bytes);
std::string TryTexts(std::string_view bytes);
std::string TryDuration(std::string_view bytes);

struct Target {
    const char* name;
    std::string (*run)(std::string_view bytes);
};
inline constexpr std::array kTargets = {
    Target{"vcards", TryVCards}, Target{"help", TryHelpPage},      Target{"blobs", TryIdBlob},
    Target{"texts", TryTexts},   Target{"durations", TryDuration},
};

} // namespace fuzz
