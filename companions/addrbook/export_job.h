// Exports contacts to a vCard file, which takes its place only when it is whole.
#pragma once

#include <vector>

#include "addrbook/byte_file.h"
#include "addrbook/contact_record.h"
#include "addrbook/transfer.h"

namespace addrbook {

class ExportJob : public Transfer {
  public:
    // The contacts in their order; one that is gone when its turn comes is passed over.
    ExportJob(DbContacts& contacts, std::vector<CEOID> ids, const std::wstring& path);

    State Step(unsigned milliseconds) override;
    int PerMille() const override;
    std::wstring Report() const override;

  private:
    DbContacts& m_contacts;
    std::vector<CEOID> m_ids;
    OutputFile m_file;
    bool m_isOpen;
    size_t m_next = 0;
    size_t m_exported = 0;
    bool m_failed = false;
};

} // namespace addrbook
