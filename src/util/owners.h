// Unique owners for what the system hands out: one owner frees each handle and each LocalAlloc block.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <memory>
#include <type_traits>

// An owner of a pointer-like handle H that is freed with Free; null means none.
template <auto Free> struct HandleFreer {
    template <typename H> void operator()(H* handle) const { Free(handle); }
};
template <typename H, auto Free>
using UniqueHandle = std::unique_ptr<std::remove_pointer_t<H>, HandleFreer<Free>>;

using UniqueFont = UniqueHandle<HFONT, DeleteObject>;
using UniqueBitmap = UniqueHandle<HBITMAP, DeleteObject>;
using UniqueBrush = UniqueHandle<HBRUSH, DeleteObject>;
using UniqueMenu = UniqueHandle<HMENU, DestroyMenu>;
using UniqueIcon = UniqueHandle<HICON, DestroyIcon>;
using UniqueImageList = UniqueHandle<HIMAGELIST, ImageList_Destroy>;
using UniqueKey = UniqueHandle<HKEY, RegCloseKey>;
using UniqueWindow = UniqueHandle<HWND, DestroyWindow>;

// A file, process or event handle. INVALID_HANDLE_VALUE is not null: turn it into nullptr before handing it
// over.
using UniqueKernelHandle = UniqueHandle<HANDLE, CloseHandle>;

struct LocalFreer {
    void operator()(void* block) const { LocalFree(block); }
};
// A block that came from LocalAlloc, as the record reads return it; the pointer's type is the block's
// content.
template <typename T> using LocalBlock = std::unique_ptr<T, LocalFreer>;
