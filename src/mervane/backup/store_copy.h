// A copy of an open store in a file of its own, made by SQLite in steps.
#pragma once

#include <string>

#include "mervane/backup/whole_store.h"
#include "mervane/sqlite/sql_database.h"

struct sqlite3_backup;

namespace mervane {

// The file has an unfinished backup's name until it is whole, and is deleted unless it is kept.
class StoreCopy {
  public:
    enum class Progress { More, Held, Made, Failed };
    enum class Naming { Named, Held, Failed };

    StoreCopy() = default;
    ~StoreCopy() { Discard(); }
    StoreCopy(const StoreCopy&) = delete;
    StoreCopy& operator=(const StoreCopy&) = delete;

    // source stays open until the copy is made or discarded. path: what the copy is to be called; the folder
    // is made. False on failure, as of everything: see Trouble.
    [[nodiscard]] bool Begin(Database& source, const std::wstring& path);
    bool IsUnderWay() const { return m_backup != nullptr; }
    // Copies so many pages, below 0 all that are left, and brings them to the disk. Held: none, while another
    // program's lock is in the way or the source is being written to. Begins by itself anew where another
    // connection has written.
    Progress Step(int pages);
    // All that is left. Waits for another program's lock, up to 2.5 seconds.
    [[nodiscard]] bool CopyAll();
    // Pages that the copy has and, as far as is known before the first step, 0.
    int PagesDone() const;
    // Of what was made; from the beginning where it was interrupted before.
    [[nodiscard]] WholeCheck::Result Check(MayGoOn mayGoOn = nullptr);
    // Gives the copy that was made and checked its name, unless a file has it. It is still deleted by
    // Discard. Waits while another program holds the file, up to two seconds.
    [[nodiscard]] bool Name(const std::wstring& path);
    // The same at once. Held: it may be named in a moment.
    [[nodiscard]] Naming TryName(const std::wstring& path);
    // The copy stays.
    void Keep() { m_file.clear(); }
    // Ends what is under way; deletes the file, and a folder that was made for it if nothing else is in it.
    void Discard();

    StoreTrouble Trouble() const { return m_trouble; }

  private:
    bool Fail(StoreTrouble trouble);
    void EndBackup();

    Database m_copy;
    Database* m_source = nullptr;
    sqlite3_backup* m_backup = nullptr;
    std::wstring m_file;
    bool m_hadFolder = false; // before the copy was begun
    StoreTrouble m_trouble = StoreTrouble::None;
};

// backup\NAME beside the store at a path.
std::wstring BackupPath(const std::wstring& storePath, const std::wstring& name);
// What the copies begin with that are kept of a store whose file was not in its place any more; the time
// follows.
std::wstring ReplacedPath(const std::wstring& storePath);
// Deletes what programs that were killed have left of copies with this path. One that another process is
// making cannot be deleted: it is open.
void DeleteUnfinished(const std::wstring& path);
// Without its folder.
std::wstring FileNameOf(const std::wstring& path);

} // namespace mervane
