#pragma once

#include "feed/marketdata.h"
#include "feed/replay/filereport.h"

#include <string_view>
#include <vector>

namespace feed {

/// Typed access to the fields of one line by column. The first value of a line that cannot be read is reported with its
/// line and column, and makes isGood() false; what is read after that is of no use and not reported.
class FieldReader
{
public:
    /// Place of a column in a line, from 0; -1 for a column that the file does not have.
    using Column = int;

    /// Largest values that are taken for real. Sums over any number of rows that fit a memory stay within 64 bits.
    static constexpr qint64 largestQuantity = 10'000'000'000;
    static constexpr qint64 largestVolume = 1'000'000'000'000'000;
    static constexpr double largestPrice = 1e8;
    static constexpr double largestAmount = 1e18;

    FieldReader(std::vector<std::string> headers, FileReport &report);

    /// The snapshots of the two exchanges name the stock differently; "SecurityID" finds either name.
    Column column(std::string_view header) const;
    const std::vector<std::string> &headers() const { return names; }
    void setLine(const std::vector<std::string_view> &fields, qint64 lineNumber);
    bool isGood() const { return good; }
    qint64 line() const { return lineNumber; }

    std::string_view text(Column column) const;
    /// A whole number within [least, most].
    qint64 whole(Column column, qint64 least, qint64 most);
    /// A quantity of at least one.
    qint64 quantity(Column column) { return whole(column, 1, largestQuantity); }
    /// A finite number within [least, most].
    double number(Column column, double least, double most);
    /// A stock's price; zero, which the exchanges write for none, is absent.
    double price(Column column);
    /// A stock's price, above zero.
    double positivePrice(Column column);
    /// A stock's price limit; a stock without one has zero, or a number that no price reaches: absent.
    double limitPrice(Column column);
    /// A future's price, which may be negative; zero and the largest double, which feeds write for none, are absent.
    double futurePrice(Column column);
    /// The one letter or number out of `choices` that stands there, as its place in `choices`.
    int choice(Column column, std::initializer_list<std::string_view> choices);
    /// Days since 1970-01-01 of yyyy.MM.dd, yyyy-MM-dd or yyyyMMdd.
    int date(Column column);
    /// Milliseconds of the day of HH:mm:ss with or without .SSS.
    int timeOfDay(Column column);
    /// Both in one field, with a T or a blank between them: milliseconds since 1970-01-01, in the zone of the file.
    qint64 dateAndTime(Column column);

    /// Reports that the value of this column is wrong, and gives the line up.
    void reject(Column column, const char *what);

private:
    std::vector<std::string> names;
    FileReport &report;
    const std::vector<std::string_view> *fields = nullptr;
    qint64 lineNumber = 0;
    bool good = true;
    std::string lastDateText; ///< rows of one day follow each other
    int lastDate = 0;
};

} // namespace feed
