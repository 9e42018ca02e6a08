#include "indexer/readers/NumberFormat.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

// Spreadsheet number formats: the first 8 bytes are the value, the rest the format code.
// What is shown stays within a few times the code's length.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < sizeof(double)) {
        return 0;
    }
    double value = 0;
    std::memcpy(&value, data, sizeof value);
    const std::string_view code(reinterpret_cast<const char*>(data) + sizeof value,
                                size - sizeof value);
    for (const bool date1904 : {false, true}) {
        const auto shown = tallyvox::indexer::readers::formatNumber(value, code, date1904);
        if (shown && shown->size() > 3 * code.size() + 1024) {
            std::abort();
        }
    }
    return 0;
}
