// What a store's file says about itself in its first bytes, read before SQLite touches the file.
#pragma once

#include <cstdint>
#include <string>

#include "mervane/file/trouble.h"
#include "mervane/sqlite/schema_steps.h"

namespace mervane {

constexpr int64_t kApplicationId = 0x514A524E;

// The file's user_version holds two numbers, a thousand times the schema's version plus the oldest version
// that a program must know to use the store.
constexpr int64_t kUserVersion = kSchemaVersion * 1000 + kOldestProgram;
constexpr int64_t SchemaVersionOf(int64_t userVersion)
{
    return userVersion / 1000;
}
constexpr int64_t OldestProgramOf(int64_t userVersion)
{
    return userVersion % 1000;
}

struct StoreMarks {
    int64_t applicationId;
    int64_t userVersion;
    bool operator==(const StoreMarks&) const = default;
};
// Whether a program of this version may use a store with these marks, and why not.
bool MayUse(const StoreMarks& marks);
StoreTrouble TroubleOfMarks(const StoreMarks& marks);

enum class FileKind { Missing, Empty, Store, ReadOnlyStore, Foreign };
struct FileLook {
    FileKind kind;
    StoreTrouble trouble; // of a foreign one: also a folder, and what cannot be read
};
FileLook LookAtFile(const std::wstring& path);

} // namespace mervane
