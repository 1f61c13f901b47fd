#include "rows/textstore.h"

#include <cstring>

namespace core {

namespace {

using Length = quint32;

} // namespace

TextStore::Ref TextStore::add(std::string_view text)
{
    const std::size_t needed = sizeof(Length) + text.size();
    quint32 number;
    if (needed > blockSize / 2) {
        number = openBlock(needed); // one for itself; the block that is being filled goes on being filled
    } else {
        if (filling == noBlock || blocks[filling].size - blocks[filling].used < needed)
            filling = openBlock(blockSize);
        number = filling;
    }
    Block &block = blocks[number];
    const Ref ref{number, static_cast<quint32>(block.used)};
    const auto length = static_cast<Length>(text.size());
    std::memcpy(block.bytes.get() + block.used, &length, sizeof length);
    text.copy(block.bytes.get() + block.used + sizeof length, text.size());
    block.used += needed;
    ++block.texts;
    return ref;
}

quint32 TextStore::openBlock(std::size_t size)
{
    quint32 number;
    if (freeBlocks.empty()) {
        number = static_cast<quint32>(blocks.size());
        blocks.emplace_back();
    } else {
        number = freeBlocks.back();
        freeBlocks.pop_back();
    }
    blocks[number].bytes.reset(new char[size]);
    blocks[number].size = size;
    return number;
}

void TextStore::remove(Ref ref)
{
    Block &block = blocks[ref.block];
    if (--block.texts > 0)
        return;
    block = Block();
    freeBlocks.push_back(ref.block);
    if (filling == ref.block)
        filling = noBlock;
}

std::string_view TextStore::text(Ref ref) const
{
    const char *const start = blocks[ref.block].bytes.get() + ref.offset;
    Length length;
    std::memcpy(&length, start, sizeof length);
    return {start + sizeof length, length};
}

} // namespace core
