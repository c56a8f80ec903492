// The blocks that the program takes while this lives and does not give back.
#pragma once

#include <set>

#include "support/import_watch.h"

class LiveBlocks {
  public:
    LiveBlocks() { s_current = this; }
    ~LiveBlocks() { s_current = nullptr; }
    LiveBlocks(const LiveBlocks&) = delete;
    LiveBlocks& operator=(const LiveBlocks&) = delete;

    size_t Count() const { return m_blocks.size(); }
    // All that were taken, those given back too.
    size_t Taken() const { return m_taken; }

  private:
    static HLOCAL WINAPI Alloc(UINT flags, SIZE_T bytes)
    {
        HLOCAL block = s_current->m_alloc.Original()(flags, bytes);
        if (block && s_current->m_blocks.insert(block).second)
            ++s_current->m_taken;
        return block;
    }
    static HLOCAL WINAPI Free(HLOCAL block)
    {
        s_current->m_blocks.erase(block);
        return s_current->m_free.Original()(block);
    }

    static inline LiveBlocks* s_current = nullptr;
    std::set<HLOCAL> m_blocks;
    size_t m_taken = 0;
    const ImportWatch<decltype(&LocalAlloc)> m_alloc{&__imp_LocalAlloc, Alloc};
    const ImportWatch<decltype(&LocalFree)> m_free{&__imp_LocalFree, Free};
};
