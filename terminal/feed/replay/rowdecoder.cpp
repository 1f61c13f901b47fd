#include "feed/replay/rowdecoder.h"

#include "feed/instrumentrules.h"

#include <QTextCodec>

namespace feed {

namespace {

/// Names in UTF-8, or in the encoding of the older files of these markets.
std::string nameInUtf8(std::string_view name)
{
    const QByteArray bytes(name.data(), int(name.size()));
    QTextCodec::ConverterState state;
    const QTextCodec *const utf8 = QTextCodec::codecForName("UTF-8");
    utf8->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0)
        return std::string(name);
    const QTextCodec *const chinese = QTextCodec::codecForName("GB18030");
    return chinese ? chinese->toUnicode(bytes).toStdString() : std::string();
}

} // namespace

RowDecoder::~RowDecoder() = default;

int RowDecoder::stock(FieldReader &in, ReplayStore &store, Column column, std::string_view code, std::string_view name)
{
    if (lastIndex >= 0 && code == lastCode)
        return lastIndex;
    int index = store.instrumentIndex(code);
    if (index < 0) {
        auto made = stockInstrument(code);
        if (!made) {
            in.reject(column, "不是股票代码（六位数字加 .SH、.SZ 或 .BJ）");
            return -1;
        }
        // A line that is given up must not leave an instrument behind.
        if (!in.isGood())
            return -1;
        index = store.addInstrument(std::move(*made));
    }
    Instrument &instrument = store.instrument(index);
    if (instrument.name.empty() && !name.empty())
        instrument.name = nameInUtf8(name);
    lastCode = code;
    lastIndex = index;
    return index;
}

int RowDecoder::future(FieldReader &in, ReplayStore &store, Column column, Column exchange)
{
    const std::string_view code = in.text(column);
    if (lastIndex >= 0 && code == lastCode)
        return lastIndex;
    int index = store.instrumentIndex(code);
    if (index < 0) {
        auto made = futureInstrument(code, in.text(exchange));
        if (!made) {
            in.reject(column, "不是期货合约代码");
            return -1;
        }
        if (!in.isGood())
            return -1;
        index = store.addInstrument(std::move(*made));
    }
    lastCode = code;
    lastIndex = index;
    return index;
}

} // namespace feed
