#pragma once

#include <QtCore/QString>
#include <QtCore/QVector>
#include <string>

#include "kdservice/eentrustbs.h"
#include "kdservice/evxtradertype.h"
#include "kdservice/fielddes.h"
#include "uicontrolexport.h"
#include "utils/cflags.h"

namespace kdservice {
class IData;
}

namespace KV {

/// Resource keys of texts in tables.
constexpr const char *defaultTextColorKey = "clr_text_default";
constexpr const char *riseColorKey = "clr_global_rise";
constexpr const char *fallColorKey = "clr_global_fall";
constexpr const char *equalColorKey = "clr_global_equal";
constexpr const char *dimTextColorKey = "clr_text_second";

/// The colour key of a side: buying is the rise colour, selling the fall colour, anything else the default.
const char *sideColorKey(kdservice::EEntrustBS side);

/// How one field becomes text and colour: its description and its display functions, read once for all records.
///
/// Numbers follow the field's precision and flags and the user's grouping; a field with display functions shows as they
/// say, whatever its number flags. An absent number or code shows as "-", a bool as 是 or 否.
/// A value type; reading it is safe on every thread. The description must outlive it.
class CFieldFormat
{
public:
    CFieldFormat();
    CFieldFormat(const kdservice::FieldDes &field, int fieldId, kdservice::EVxTraderType traderType);
    ~CFieldFormat();
    CFieldFormat(const CFieldFormat &);
    CFieldFormat &operator=(const CFieldFormat &);

    /// Null for a column without a field.
    const kdservice::FieldDes *field() const { return description; }
    int fieldId() const { return id; }

    /// Asks the catalogue now for the texts of an enumeration's small values, so that a cell takes its text without a
    /// look-up. Worth it for whoever shows many records.
    void rememberEnumTexts();

    /// `holder` is the record that has the field itself.
    QString text(const kdservice::IData &holder) const;
    /// Whether records with the same value in the field have the same text: not where the decimals or a name are those
    /// of the record's instrument.
    bool textFollowsValue() const;
    /// What a text made by text() has as its unit: "万", "亿", "%" or nothing.
    QString unitOf(const QString &text) const;
    /// Resource key of the text's colour; a literal.
    const char *colorKey(const kdservice::IData &holder) const;

private:
    enum class Shown
    {
        AsItIs,
        Enumeration,
        Time,
        Duration,
        Price,
        OptionName,
        InstrumentName
    };
    enum class Colored
    {
        Plain,
        Side,
        Change,
        ComparedPrice,
        Status
    };

    bool hasFunc(kdservice::EDisplayFunc func, std::string *argument = nullptr) const;
    void readFuncs();
    bool isAbsentNumber(const kdservice::IData &holder) const;
    bool isNoTime(qint64 value) const;
    double number(const kdservice::IData &holder) const;
    utils::CFlags<utils::EFormatNumberFlag> numberFlags() const;
    QString integerText(qint64 value) const;
    QString doubleText(const kdservice::IData &holder) const;
    QString stringText(const kdservice::IData &holder) const;
    QString codeText(const kdservice::IData &holder) const;
    QString enumText(int value) const;
    int priceDecimals(const kdservice::IData &holder) const;

    const kdservice::FieldDes *description = nullptr;
    int id = -1;
    kdservice::EVxTraderType trader = kdservice::TraderNone;
    Shown shown = Shown::AsItIs;
    Colored colored = Colored::Plain;
    int precision = 0;
    int timePart = 0;       ///< utils::ETimeText
    int argumentField = -1; ///< field id in the argument of the function in `shown`
    int compareField = -1;  ///< field id of the price to compare with
    std::string enumName;
    QVector<QString> enumTexts; ///< texts of the values from 0 on, null where unknown; empty before rememberEnumTexts()
};

} // namespace KV
