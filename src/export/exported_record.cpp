#include "export/exported_record.h"

const CEPROPVAL* ExportedRecord::Find(CEPROPID id) const
{
    for (WORD i = count; i-- > 0;)
        if (properties[i].propid == id && !(properties[i].wFlags & CEDB_PROPNOTFOUND))
            return &properties[i];
    return nullptr;
}
