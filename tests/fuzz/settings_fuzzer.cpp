// The settings file on arbitrary bytes, as the store reads it at start-up: whatever the
// limits let through must parse and be freed by libplist without a crash, however deep,
// shared or self-referencing the input is.
#include "prefs/PlistLimits.h"

#include <plist/plist.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (bytes.isEmpty() || !tallyvox::withinPlistLimits(bytes)) {
        return 0;
    }
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
    if (root) {
        // Writing it back recurses like freeing does; the store does both at quit.
        char* xml = nullptr;
        uint32_t length = 0;
        plist_to_xml(root, &xml, &length);
        plist_to_xml_free(xml);
        plist_free(root);
    }
    return 0;
}
