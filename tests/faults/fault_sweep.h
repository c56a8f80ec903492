// One piece of work, done again and again, while exactly one call of the system or one request for memory
// fails.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "mervane/db_categories.h"
#include "mervane/db_contacts.h"
#include "mervane/db_journal.h"
#include "support/fault_memory.h"
#include "support/fault_vfs.h"
#include "support/test_drive.h"
#include "support/test_store.h"

// What the work reported. Failed: and the caller was told why.
enum class Outcome { Done, Failed };

// The drive of the store: FAULT_DRIVE=stick in the environment makes it one that can be pulled out, on which
// a store has a rollback journal and no log.
class DriveOfRun {
  public:
    DriveOfRun();
    ~DriveOfRun();
    DriveOfRun(const DriveOfRun&) = delete;
    DriveOfRun& operator=(const DriveOfRun&) = delete;

  private:
    std::wstring m_folder; // for temporary files, of which the store is one
    std::optional<TestDrive> m_drive;
};

// FAULTS=all in the environment tries every call; otherwise FAULTS_EACH of them, chosen by FAULT_SEED, for
// each piece of work.
class FaultSweep : public testing::Test {
  protected:
    // So that memory and file system are watched before the first store is opened, and longer than all
    // others.
    FaultSweep();
    ~FaultSweep() override;

    struct Work {
        // Before anything fails, over the store, which is closed.
        std::function<bool()> prepare;
        // The work itself, and again without a fault where it has failed.
        std::function<Outcome()> run;
        // Closes all that the others have opened. The work leaves the store as it is.
        std::function<void()> end;
        // What the work does, as statements on the store.
        std::string model = {};
        // Whether run can be called again after it has failed.
        bool triesAgain = true;
    };
    // The journal with 40 entries, 6 categories, 20 contacts. No test changes it.
    void Sweep(const Work& work);

    // The three databases of one store, open or not.
    bool OpenAll();
    void CloseAll();

    const std::wstring& Path() const { return m_store.Path(); }

    DbJournal m_journal;
    DbCategories m_categories;
    DbContacts m_contacts;

  private:
    struct Point {
        bool inMemory;
        FileCall call;
        int fault;
        int n;
    };

    void MakeTemplate();
    void Restore();
    std::vector<Point> PointsOf(const Work& work);
    std::vector<Point> Chosen(std::vector<Point> points) const;
    void Arm(const Point& point);
    void Disarm();
    bool HasFired(const Point& point) const;
    void Try(const Work& work, const Point& point);
    void ExpectUnchanged(const Work& work);
    void ExpectDone(const Work& work);
    static std::string Describe(const Point& point);

    FaultMemory m_memory;
    FaultVfs m_vfs;
    DriveOfRun m_drive;
    TestStore m_store;
    std::string m_template;
    std::string m_before, m_after; // dumps
    int m_failed = 0, m_done = 0, m_notFired = 0;
};
