// Plays the files of a corpus, then changes them at random for some seconds.
// usage: fuzz_NAME [--seconds N] [--seed N] FILE_OR_FOLDER ...
// The input that shows a fault is left in the working folder as crash-NAME.

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <csignal>
#include <random>
#include <vector>

#include "fuzzinput.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t largestInput = 4096;

Bytes current;
std::string crashFile;

void keepCrash(int signal)
{
    if (std::FILE *file = std::fopen(crashFile.c_str(), "wb")) {
        std::fwrite(current.data(), 1, current.size(), file);
        std::fclose(file);
        std::fprintf(stderr, "The input is in %s\n", crashFile.c_str());
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void run(const Bytes &input)
{
    current = input;
    LLVMFuzzerTestOneInput(current.data(), current.size());
}

Bytes contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        std::exit(2);
    }
    const QByteArray content = file.readAll();
    return Bytes(content.begin(), content.end());
}

class Mutator
{
public:
    Mutator(std::vector<Bytes> kept, unsigned seed) : corpus(std::move(kept)), random(seed) {}

    Bytes next()
    {
        Bytes bytes = any();
        for (std::size_t changes = 1 + below(4); changes > 0; --changes)
            change(bytes);
        if (bytes.size() > largestInput)
            bytes.resize(largestInput);
        return bytes;
    }

private:
    std::size_t below(std::size_t limit)
    {
        return static_cast<std::size_t>(random()) % std::max<std::size_t>(limit, 1);
    }
    const Bytes &any() { return corpus[below(corpus.size())]; }
    std::uint8_t byte()
    {
        static constexpr std::uint8_t telling[] = {0, 1, 0x7F, 0x80, 0xFF, '\n', '\r', ',', '"', '.', '-', '0', '9'};
        return below(2) == 0 ? telling[below(sizeof telling)] : static_cast<std::uint8_t>(random());
    }

    void change(Bytes &bytes)
    {
        const auto at = bytes.begin() + static_cast<std::ptrdiff_t>(below(bytes.size() + 1));
        switch (below(5)) {
        case 0:
            bytes.insert(at, 1 + below(8), byte());
            break;
        case 1: {
            const Bytes &other = any();
            const std::size_t from = below(other.size());
            const std::size_t length = below(std::min<std::size_t>(other.size() - from + 1, 64));
            const Bytes part(other.begin() + static_cast<std::ptrdiff_t>(from),
                             other.begin() + static_cast<std::ptrdiff_t>(from + length));
            bytes.insert(at, part.begin(), part.end());
            break;
        }
        case 2:
            bytes.erase(at, at + static_cast<std::ptrdiff_t>(
                                     below(std::min<std::size_t>(static_cast<std::size_t>(bytes.end() - at) + 1, 16))));
            break;
        default:
            if (at != bytes.end())
                *at = byte();
        }
    }

    std::vector<Bytes> corpus;
    std::mt19937 random;
};

} // namespace

int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    crashFile = "crash-" + QFileInfo(QString::fromLocal8Bit(argv[0])).fileName().toStdString();
    for (const int signal : {SIGABRT, SIGSEGV, SIGFPE, SIGBUS, SIGILL})
        std::signal(signal, keepCrash);

    qint64 seconds = 0;
    unsigned seed = std::random_device{}();
    std::vector<Bytes> corpus;
    for (int i = 1; i < argc; ++i) {
        const QString word = QString::fromLocal8Bit(argv[i]);
        if (word == QLatin1String("--seconds") && i + 1 < argc) {
            seconds = std::atoll(argv[++i]);
        } else if (word == QLatin1String("--seed") && i + 1 < argc) {
            seed = static_cast<unsigned>(std::atoll(argv[++i]));
        } else if (QFileInfo(word).isDir()) {
            for (const QFileInfo &file : QDir(word).entryInfoList(QDir::Files, QDir::Name))
                corpus.push_back(contentOf(file.filePath()));
        } else {
            corpus.push_back(contentOf(word));
        }
    }
    if (corpus.empty()) {
        std::fprintf(stderr, "no inputs: name the folder of a corpus\n");
        return 2;
    }

    for (const Bytes &input : corpus)
        run(input);
    std::printf("%zu kept inputs played; seed %u\n", corpus.size(), seed);
    std::fflush(stdout);
    Mutator mutator(corpus, seed);
    QElapsedTimer clock;
    clock.start();
    qint64 tries = 0;
    for (; clock.elapsed() < 1000 * seconds; ++tries)
        run(mutator.next());
    std::printf("%lld changed inputs tried\n", static_cast<long long>(tries));
    return 0;
}
