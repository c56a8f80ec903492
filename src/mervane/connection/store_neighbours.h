// The files that lie beside a store's file, a log or a journal, before SQLite takes them for the store's.
#pragma once

#include <string>
#include <vector>

#include "mervane/file/trouble.h"
#include "mervane/sqlite/store_header.h"

namespace mervane {

// Files that were set aside under a name that says so and when; nothing is ever deleted.
class AsideFiles {
  public:
    [[nodiscard]] StoreTrouble SetAside(const std::wstring& path);
    bool Has(const std::wstring& path) const;
    // Gives them their names again, where these are free; the others stay in Files.
    void PutBack();
    const std::vector<RenamedFile>& Files() const { return m_files; }

  private:
    std::vector<RenamedFile> m_files;
};

// Sets aside what does not belong to the file. Answers None when the file can be opened with what then lies
// beside it. Else nothing but names was touched, which the caller puts back: the file is not ours, or nobody
// can tell whether its neighbours belong to it.
[[nodiscard]] StoreTrouble PrepareNeighbours(const std::wstring& path, const FileLook& file,
                                             AsideFiles* aside);

} // namespace mervane
