// Long log lines are cut into the pieces that measuring after every character gives.

#include <QtGui/QFontMetrics>
#include <QtGui/QGuiApplication>
#include <algorithm>

#include "fuzzinput.h"
#include "log/cloglinecutter.h"

namespace {

constexpr int longestLine = 700;

std::vector<int> plainLengths(const QFontMetrics &metrics, const QString &line, int width)
{
    if (metrics.horizontalAdvance(line) <= width)
        return {line.size()};
    std::vector<int> lengths;
    int start = 0;
    int count = 10;
    if (line.size() > count) {
        do {
            if (metrics.horizontalAdvance(line.mid(start, count)) > width) {
                lengths.push_back(count - 1);
                start += count - 1;
                count = 10;
            }
            ++count;
        } while (start + count < line.size());
    }
    if (start < line.size())
        lengths.push_back(line.size() - start);
    return lengths;
}

std::string difference(const std::vector<int> &lengths, const std::vector<int> &plain)
{
    const auto [cut, loop] = std::mismatch(lengths.begin(), lengths.end(), plain.begin(), plain.end());
    const auto lengthAt = [](auto piece, auto end) {
        return piece == end ? std::string("missing") : std::to_string(*piece) + " characters long";
    };
    return "piece " + std::to_string(cut - lengths.begin()) + " is " + lengthAt(cut, lengths.end()) +
           ", with the plain loop " + lengthAt(loop, plain.end()) + " (pieces: " + std::to_string(lengths.size()) +
           " and " + std::to_string(plain.size()) + ")";
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QGuiApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static const char *const families[] = {"Noto Sans Mono CJK SC", "Noto Sans CJK SC", "DejaVu Sans", "monospace"};
    fuzz::Input input(bytes, size);
    QFont font{QString::fromLatin1(families[input.below(4)])};
    font.setPixelSize(8 + input.below(24));
    const int width = input.number<std::uint16_t>() % 1200 - 2;
    // Either of the two ways in which bytes become text in a log.
    const QString line =
        input.below(2) == 0 ? input.text(longestLine) : QString::fromUtf8(input.bytes(2 * longestLine));

    KV::CLogLineCutter cutter(font);
    std::vector<int> lengths;
    cutter.cut(line.utf16(), line.size(), width, lengths);
    if (line.isEmpty())
        return 0;
    const std::vector<int> plain = plainLengths(QFontMetrics(font), line, width);
    fuzz::require(lengths == plain, difference(lengths, plain));
    return 0;
}
