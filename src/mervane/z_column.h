// ZColumn: one field of the list: its title and its flags word, which is also the stored form.
#pragma once

#include <windows.h>

#include <string>

// The flags word.
constexpr DWORD kColumnDescending = 0x01;
constexpr DWORD kColumnToggled = 0x02; // direction state of the header-click toggle
constexpr DWORD kColumnSortable = 0x04;
constexpr DWORD kColumnShown = 0x08;
constexpr DWORD kColumnSort = 0x10; // the list is sorted by this column
constexpr DWORD kColumnNeverOffered = 0x20;
constexpr DWORD kColumnExport = 0x40; // chosen in the export field list
constexpr int kColumnWidthShift = 12;
constexpr DWORD kColumnWidthMask = 0xFFF; // 0 to 4095 pixels
constexpr int kColumnPropertyShift = 24;

// Header images (bitmap 211).
constexpr int kHeaderImageNone = 0;
constexpr int kHeaderImageAscending = 1;
constexpr int kHeaderImageDescending = 2;
constexpr int kHeaderImagePriority = 3;       // the priority icon column
constexpr int kHeaderImagePrioritySorted = 4; // the same as the sort column

class ZColumn {
  public:
    // title: at most 59 characters are kept. width is clipped to 0..4095. flags: the bits below the width.
    void Copy(const wchar_t* title, WORD property, DWORD flags, int width);
    void Copy(const ZColumn& other) { *this = other; }

    const std::wstring& Title() const { return m_title; }
    DWORD GetFlags() const { return m_flags; }
    void SetFlags(DWORD flags) { m_flags = flags; } // the whole word
    bool Has(DWORD bits) const { return (m_flags & bits) == bits; }
    void Add(DWORD bits) { m_flags |= bits; }
    void Remove(DWORD bits) { m_flags &= ~bits; }
    WORD Property() const { return static_cast<WORD>(m_flags >> kColumnPropertyShift); }
    int Width() const { return static_cast<int>((m_flags >> kColumnWidthShift) & kColumnWidthMask); }
    void SetWidth(int width); // clipped to 0..4095

    // Makes this the sort column in the direction it has.
    int SetActive();
    // Flip the direction. They differ only in the toggle state they leave, which says which one the next
    // header click calls. All three return the header image.
    int SetAscending();
    int SetDecending();
    // The header image of the direction.
    int GetSortOrder() const;

  private:
    std::wstring m_title;
    DWORD m_flags = 0;
};
