#include "benchcase.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtGui/QImage>
#include <QtGui/QKeyEvent>
#include <QtGui/QPixmap>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCompleter>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <algorithm>
#include <random>

#include "codes/charreadings.h"
#include "codes/codeindexsource.h"
#include "codes/codepopup.h"
#include "kv/cstockcodelineedit.h"
#include "records/record.h"
#include "services/instruments.h"
#include "zb/clineedit.h"

namespace bench {

namespace {

constexpr int fullCount = 20000;
constexpr int quickCount = 2000;
constexpr int rounds = 5;

const QString knownCode = QStringLiteral("600519");

/// What traders type: initials, a part of them, a code, its first digits, a name, two readings, nothing that is there.
const QStringList entries = {QStringLiteral("gzmt"), QStringLiteral("yh"),   knownCode,
                             QStringLiteral("0012"), QStringLiteral("银行"), QStringLiteral("cqyh"),
                             QStringLiteral("qxzw")};

QString nameOf(std::mt19937 &random)
{
    static const QString characters = QStringLiteral(
        "贵州茅台重庆银行平安长安汽车中国石油化工宁德时代万科招商证券东方财富恒瑞医药海天味业格力电器美的集团"
        "五粮液紫金矿业隆基绿能比亚迪药明康德迈瑞生物伊利股份科技电子材料能源环保新城建设厦门乐普单行会");
    QString name;
    for (int length = 4; length > 0; --length)
        name += characters[std::uniform_int_distribution<int>(0, characters.size() - 1)(random)];
    return name;
}

std::vector<KV::InstrumentItem> knownInstruments(int count)
{
    static std::vector<KV::InstrumentItem> known;
    if (!known.empty())
        return known;
    std::mt19937 random(11);
    for (int i = 0; i < count; ++i) {
        const bool isShanghai = i % 2 == 0;
        const QString code = QStringLiteral("%1%2").arg(isShanghai ? "60" : "00").arg(i / 2, 4, 10, QLatin1Char('0')) +
                             (isShanghai ? QStringLiteral(".SH") : QStringLiteral(".SZ"));
        const auto record = refhost::makePlain(refhost::MetaInstrument, code.toStdString());
        record->setData(refhost::InstrumentCode, code.toStdString());
        record->setData(refhost::InstrumentName, nameOf(random).toStdString());
        refhost::Instruments::put(record);
    }
    known = KV::getInstrumentList();
    return known;
}

/// The time of each key of the entries, from the key press to the painted list, in ms.
struct KeyTimes
{
    std::vector<double> all;
    /// 0.5: the median; 0 without any.
    double at(double share)
    {
        if (all.empty())
            return 0;
        std::sort(all.begin(), all.end());
        return all[static_cast<std::size_t>(share * static_cast<double>(all.size() - 1))];
    }
};

QImage pictureOf(QWidget *list)
{
    return list && list->isVisible() ? list->grab().toImage() : QImage();
}

/// list: gives the widget with the list of codes, null while there is none.
template <typename List>
void typeEntries(QLineEdit &edit, KeyTimes &times, List list)
{
    for (const QString &entry : entries) {
        edit.selectAll();
        for (const QChar character : entry) {
            const double seconds = secondsOf([&] {
                QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
                QApplication::sendEvent(&edit, &press);
                if (QWidget *const shown = list())
                    shown->repaint();
            });
            times.all.push_back(seconds * 1e3);
            const QImage painted = pictureOf(list());
            QCoreApplication::processEvents();
            if (painted != pictureOf(list()))
                qFatal("the list of codes was not complete when it was painted");
        }
        if (entry == knownCode && pictureOf(list()).isNull())
            qFatal("there is no list for %s", qUtf8Printable(entry));
    }
}

KeyTimes ourKeys()
{
    ZB::CodeIndexSource *source = ZB::CodeIndexSource::instance();
    source->refresh();
    while (source->index() == nullptr)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    KV::CStockCodeLineEdit field(1, 1, nullptr, false);
    field.show();
    field.activateWindow();
    field.getLineEdit()->setFocus();
    QCoreApplication::processEvents();
    const auto list = [&field] { return field.findChild<ZB::CodePopup *>(); };
    KeyTimes first, times;
    typeEntries(*field.getLineEdit(), first, list); // makes the list
    for (int round = 0; round < rounds; ++round)
        typeEntries(*field.getLineEdit(), times, list);
    return times;
}

/// A completer over a model of "code name initials", matching anywhere in it, as one would without a library of one's
/// own. It knows one reading per character and no ranks.
KeyTimes stockKeys(const std::vector<KV::InstrumentItem> &instruments)
{
    ZB::CharReadings readings;
    QStandardItemModel model(static_cast<int>(instruments.size()), 1);
    for (int row = 0; row < model.rowCount(); ++row) {
        const KV::InstrumentItem &item = instruments[static_cast<std::size_t>(row)];
        QString initials;
        for (const QChar character : item.name) {
            const quint64 bits = readings.initialsOf(character.unicode());
            for (char letter = 'a'; letter <= 'z'; ++letter)
                if ((bits & ZB::initialBit(char32_t(letter))) != 0) {
                    initials += QLatin1Char(letter);
                    break;
                }
        }
        model.setItem(row, new QStandardItem(item.code + QLatin1Char(' ') + item.name + QLatin1Char(' ') + initials));
    }
    QLineEdit edit;
    QCompleter completer(&model);
    completer.setFilterMode(Qt::MatchContains);
    completer.setCaseSensitivity(Qt::CaseInsensitive);
    edit.setCompleter(&completer);
    edit.show();
    edit.activateWindow();
    edit.setFocus();
    QCoreApplication::processEvents();
    KeyTimes first, times;
    const auto list = [&completer] { return completer.popup(); };
    typeEntries(edit, first, list);
    for (int round = 0; round < rounds; ++round)
        typeEntries(edit, times, list);
    return times;
}

std::vector<BenchRow> complete(bool quick)
{
    const int count = quick ? quickCount : fullCount;
    const std::vector<KV::InstrumentItem> instruments = knownInstruments(count);
    KeyTimes ours = ourKeys();
    KeyTimes stock;
    if (isStockWanted())
        stock = stockKeys(instruments);
    const auto row = [&](const char *name, double share) {
        return BenchRow{name, count, "ms", ours.at(share), stock.at(share), stock.at(share) / ours.at(share)};
    };
    ZB::CharReadings readings;
    readings.initialsOf(U'中'); // loads the transliteration, once per process
    const double build = secondsOf([&] { ZB::CodeIndex(instruments, readings); });
    return {row("code.complete", 0.5), row("code.complete_p95", 0.95), {"code.index", count, "ms", build * 1e3, 0, 0}};
}

const BenchRegistration registration("code", complete);

} // namespace

} // namespace bench
