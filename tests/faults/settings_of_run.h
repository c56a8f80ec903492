// How much a run of these programs does, and with which seed: the long forms are asked for by the
// environment.
#pragma once

#include <cstdint>
#include <cstdlib>

// A variable's whole number, or the one of the short form.
inline unsigned NumberFromEnvironment(const char* name, unsigned shortForm)
{
    const char* text = std::getenv(name);
    return text && *text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : shortForm;
}
