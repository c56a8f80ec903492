// The master list of categories while a user edits it: nothing is stored until it is saved, all at once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mervane/values/ce_types.h"

class DbCategories;

class CategoryDraft {
  public:
    struct Item {
        CEOID id = 0; // 0: not stored yet
        std::wstring name;
        int uses = 0;
        bool hidden = false;
    };
    enum class Fault { None, Empty, TooLong, Taken };

    // Takes the categories as they are stored, of a damaged store those that can be read; false when they are
    // not open or cannot be read now.
    [[nodiscard]] bool Load(DbCategories& categories);

    // In the order of their names.
    int Count() const { return static_cast<int>(m_drafts.size()); }
    const Item& At(int row) const { return m_drafts[static_cast<size_t>(row)].item; }
    // What is wrong with a name for a new category, or for the one of a row.
    Fault Check(std::wstring_view name, int row = -1) const;

    // The name is one that Check finds nothing wrong with. They return the row that the category has now.
    int Add(const std::wstring& name);
    int Rename(int row, const std::wstring& name);
    void SetHidden(int row, bool hidden);
    void Delete(int row);

    bool IsChanged() const;
    // Makes the stored categories so, in one transaction; without changes nothing is written. What other
    // programs have changed stays where it was not changed here, and what they have deleted stays deleted.
    // False when not all could be written: nothing is stored then. The categories' Trouble says why, None
    // when another program has given a name to a category of its own.
    [[nodiscard]] bool Save(DbCategories& categories) const;

  private:
    struct Draft {
        Item item;
        std::string key; // that the order goes by
        Item stored;
        bool IsNew() const { return item.id == 0; }
        bool IsRenamed() const { return !IsNew() && item.name != stored.name; }
    };

    static bool ComesBefore(const Draft& a, const Draft& b);
    bool Read(DbCategories& categories);
    int Insert(Draft draft);
    bool DeleteStored(DbCategories& categories) const;
    bool RenameStored(DbCategories& categories) const;
    bool MakeWay(DbCategories& categories, const Draft& renamed) const;
    bool HideStored(DbCategories& categories) const;
    bool AddNew(DbCategories& categories) const;

    std::vector<Draft> m_drafts;
    std::vector<CEOID> m_deleted; // of the stored ones
};
