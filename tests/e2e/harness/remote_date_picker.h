// A date-time picker of another process.
#pragma once

#include <windows.h>

#include <optional>

#include "e2e/harness/remote_memory.h"

class RemoteDatePicker {
  public:
    explicit RemoteDatePicker(HWND picker);

    // Nothing when its check box is there and empty.
    std::optional<SYSTEMTIME> Value() const;
    // Sets the value and tells the parent as a user's change would (DTN_DATETIMECHANGE).
    [[nodiscard]] bool Change(const SYSTEMTIME& value) const;
    [[nodiscard]] bool Clear() const;

  private:
    bool Change(const SYSTEMTIME& value, WPARAM validity) const;

    HWND m_picker;
    UniqueKernelHandle m_process;
};
