#include "mervane/file/database_header.h"

#include <array>

#include "mervane/file/file_reader.h"

namespace mervane {

FirstPage FirstPageIn(std::span<const BYTE> page)
{
    return {BigEndianAt(page, 24), BigEndianAt(page, 28), BigEndianAt(page, 40), BigEndianAt(page, 60)};
}

uint32_t ApplicationIdIn(std::span<const BYTE> page)
{
    return BigEndianAt(page, 68);
}

std::optional<DatabaseHeader> ReadDatabaseHeader(const std::wstring& path, bool* hasFailed)
{
    std::array<BYTE, kDatabaseHeaderSize> header{};
    const FileReader file(path);
    const bool isRead = file.Read(0, header);
    *hasFailed |= file.HasFailed();
    if (!isRead)
        return std::nullopt;
    const auto size = static_cast<uint32_t>(header[16] << 8 | header[17]);
    return DatabaseHeader{size == 1 ? 65536 : size, header[kWriteVersionPlace] == kVersionWithLog,
                          FirstPageIn(header)};
}

} // namespace mervane
