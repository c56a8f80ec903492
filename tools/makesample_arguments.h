// The command line of makesample.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sample/sample_store.h"

struct MakeSampleArguments {
    std::wstring store;
    sample::SamplePlan plan;
};

// STORE COUNT [--bulk] [--seed N] [--today YYYY-MM-DD]; nothing when the arguments are not that.
std::optional<MakeSampleArguments> ParseArguments(const std::vector<std::wstring>& arguments);
