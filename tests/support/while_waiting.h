// Another program has the store's lock until a write has begun to wait for it. Does something then, and lets
// go.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "mervane/file/store_waiter.h"
#include "support/locked_store.h"

class WhileWaiting {
  public:
    WhileWaiting(const std::wstring& path, std::function<void()> action)
        : m_lock(std::make_unique<LockedStore>(path)), m_action(std::move(action))
    {
        s_current = this;
        SetStoreWaiter([](DWORD) {
            if (s_current->m_action)
                std::exchange(s_current->m_action, nullptr)();
            s_current->m_lock.reset();
        });
    }
    ~WhileWaiting() { SetStoreWaiter(nullptr); }
    WhileWaiting(const WhileWaiting&) = delete;
    WhileWaiting& operator=(const WhileWaiting&) = delete;

    bool WasDone() const { return !m_action; }

  private:
    static inline WhileWaiting* s_current = nullptr;
    std::unique_ptr<LockedStore> m_lock;
    std::function<void()> m_action;
};
