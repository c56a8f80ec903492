// What a believable entry is about. Texts may name {n} a contact, {c} the contact's company, {p} a project
// and {d} a small number.
#pragma once

#include <cstddef>
#include <string>

#include "sample/random.h"
#include "sample/sample_entry.h"

namespace sample {

enum class Tone { Talk, Meeting, Mail, Paper, Work, Private };

struct Scenario {
    const wchar_t* type;
    const wchar_t* subject;
    Category category;
    int minutes; // usual length; 0: none
    Tone tone;
};

// Any of the scenarios.
const Scenario& PickScenario(Random& random);
// A line of a body; never empty.
const wchar_t* PickLine(Tone tone, Random& random);
const wchar_t* PickProject(Random& random);

} // namespace sample
