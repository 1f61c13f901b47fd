#pragma once

#include <QtCore/qglobal.h>
#include <memory>
#include <string_view>
#include <vector>

namespace core {

/// Many short byte strings, packed one behind the other into blocks of 64 KiB: four bytes beside the text itself. A
/// block is given back when the last of its texts is removed. Not thread-safe.
class TextStore
{
public:
    struct Ref
    {
        quint32 block = 0;
        quint32 offset = 0;
    };

    Ref add(std::string_view text);
    void remove(Ref ref);
    /// Valid until the text is removed.
    std::string_view text(Ref ref) const;

private:
    static constexpr std::size_t blockSize = 65536;
    static constexpr quint32 noBlock = 0xffffffffu;

    struct Block
    {
        std::unique_ptr<char[]> bytes;
        std::size_t used = 0;
        std::size_t size = 0;
        int texts = 0;
    };
    quint32 openBlock(std::size_t size);

    std::vector<Block> blocks;
    std::vector<quint32> freeBlocks;
    quint32 filling = noBlock;
};

} // namespace core
