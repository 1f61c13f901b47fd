#include "codes/charreadings.h"

#include <unicode/utrans.h>

#include <QtCore/QChar>
#include <QtCore/QString>

namespace ZB {

namespace {

/// Characters of names whose readings begin with different letters, under each letter that transliteration, which gives
/// one reading, may leave out.
struct FurtherReadings
{
    char letter;
    const char16_t *characters;
};

constexpr FurtherReadings furtherReadings[] = {
    {'a', u"厂"},
    {'b', u"薄堡柏泊秘辟屏便扁膀刨耙瀑曝蚌"},
    {'c', u"重长朝曾参藏单传车乘盛澄仇匙尺臭畜查种兹禅刹差场创"},
    {'d', u"单都大石弹调提翟囤沓澄石得地"},
    {'e', u"阿"},
    {'f', u"佛番否宓"},
    {'g', u"合给贾葛盖芥颈红蛤龟谷广柜桧枸莞涡纶咖扛夹"},
    {'h', u"行会和还划虹吓华荷夏核巷溃戏"},
    {'j', u"系降校解给贾稽见角奇圈强茄浅虹龟车夹芥颈卡柜"},
    {'k', u"会卡咖溃隗括"},
    {'l', u"乐率六绿露纶角陆"},
    {'m', u"万秘泌模没蔓无"},
    {'n', u"弄粘娜南"},
    {'o', u"区"},
    {'p', u"番屏便扁堡泊朴膀刨耙瀑曝埔蕃辟冯蚌"},
    {'q', u"强奇圈茄浅仇期区卡覃栖稽龟铅纤"},
    {'s', u"厦宿沈单石盛省莎召属什匙数术氏折殖乘禅刹峙似说率莘汤参识射忪"},
    {'t', u"调弹提拓陶覃囤沓汤屯"},
    {'w', u"万尾尉蔚遗隗涡蔓凹没无"},
    {'x', u"行系降校解厦省洗宿巷吁虾戏叶铣莘邪吓臭畜血见栖削纤荨"},
    {'y', u"乐尾尉蔚叶遗铅谷吁艾殷粥陶射轧说"},
    {'z', u"重长朝曾藏传种查仔钻属择翟折扎粘择轧殖只栅屯峙召术氏似兹澄识"},
};

} // namespace

char32_t foldedCharacter(char32_t character)
{
    constexpr char32_t firstWide = 0xff01, lastWide = 0xff5e, wideShift = 0xfee0;
    if (character >= firstWide && character <= lastWide)
        character -= wideShift;
    return QChar::toLower(character);
}

/// ICU's own transliteration of Han characters to Latin letters without marks. Without it (data missing) no reading is
/// known but the further ones.
class CharReadings::Transliterator
{
public:
    Transliterator()
    {
        const char16_t id[] = u"Han-Latin; Latin-ASCII; Lower";
        UErrorCode error = U_ZERO_ERROR;
        handle = utrans_openU(reinterpret_cast<const UChar *>(id), -1, UTRANS_FORWARD, nullptr, 0, nullptr, &error);
    }
    ~Transliterator()
    {
        if (handle != nullptr)
            utrans_close(handle);
    }
    Q_DISABLE_COPY(Transliterator)

    quint64 initialOf(char32_t character) const
    {
        if (handle == nullptr)
            return 0;
        constexpr int capacity = 64;
        UChar text[capacity] = {};
        const QString source = QString::fromUcs4(&character, 1);
        int length = source.size();
        std::copy(source.utf16(), source.utf16() + length, text);
        int limit = length;
        UErrorCode error = U_ZERO_ERROR;
        utrans_transUChars(handle, text, &length, capacity, 0, &limit, &error);
        return U_SUCCESS(error) && length > 0 ? initialBit(text[0]) : 0;
    }

private:
    UTransliterator *handle = nullptr;
};

CharReadings::CharReadings() = default;
CharReadings::~CharReadings() = default;

quint64 CharReadings::initialsOf(char32_t character)
{
    if (const quint64 itself = initialBit(character))
        return itself;
    if (!QChar::isLetter(character))
        return 0;
    if (transliterator == nullptr) {
        transliterator = std::make_unique<Transliterator>();
        for (const FurtherReadings &reading : furtherReadings)
            for (const char16_t *further = reading.characters; *further != 0; ++further)
                known[*further] |= initialBit(char32_t(reading.letter));
        for (auto &entry : known)
            entry.second |= transliterator->initialOf(entry.first);
    }
    const auto found = known.find(character);
    if (found != known.end())
        return found->second;
    return known[character] = transliterator->initialOf(character);
}

} // namespace ZB
