#include <log4cxx/logger.h>

#include <limits>

#include "grid/gridview.h"
#include "loggedlines.h"
#include "records/typecatalogue.h"
#include "recordwindow.h"
#include "utils/clogcenter.h"
#include "zb/cuiresource.h"

namespace {

using namespace testrecords;
using kdservice::ExtDouble;
using kdservice::ExtInt;
using refhost::FieldDef;

constexpr int metaSums = 990201;
constexpr int sumLogId = 51;

enum SumField : int
{
    BoldPrice = 51, ///< three decimals, centred, bold
    FineCount = 52, ///< an int whose cells have decimals
    PlainText = 53  ///< summed, but of a type without a sum
};

class CDataTableStatistics : public RecordWindow
{
protected:
    CDataTableStatistics()
    {
        static const refhost::RecordType *type = refhost::TypeCatalogue::instance().registerType(
            {metaSums,
             refhost::RecordKind::Plain,
             {{BoldPrice, ExtDouble, "价", 3, refhost::Sum | refhost::Bold | refhost::AlignCentre},
              {FineCount, ExtInt, "数", 2, refhost::Sum},
              {PlainText, kdservice::ExtString, "字", 0, refhost::Sum}}});
        Q_UNUSED(type)
        delete table;
        table = new OpenTable(tableId, metaSums, window.get());
    }

    RecordPtr add(const std::string &key, double price, int count)
    {
        const auto record = refhost::makePlain(metaSums, key);
        record->setData(BoldPrice, price);
        record->setData(FineCount, count);
        record->setData(PlainText, std::string("7"));
        table->updateData(record, false);
        return record;
    }

    void sum(const RecordPtr &record)
    {
        std::map<int, kdservice::FieldDes *> fields;
        for (const int id : {BoldPrice, FineCount, PlainText})
            fields[id] = record->getFieldDes().at(id);
        fields[4711] = record->getFieldDes().at(BoldPrice); // of a column that there is not
        fields[4712] = nullptr;
        table->updateStatData(fields);
    }
};

} // namespace

TEST_F(CDataTableStatistics, TakeTheDecimalsAlignmentAndBoldnessOfTheirField)
{
    add("a", 1.25, 3);
    sum(add("b", 2.5, 4));
    EXPECT_EQ(statistics(), "3.750|7|") << "whole numbers have no decimals, texts no sum";
    const auto *grid = table->findChild<ZB::GridView *>();
    const auto look = [grid](int column) { return grid->column(column); };
    EXPECT_TRUE(table->statColumnBoldFont(0));
    EXPECT_TRUE(look(0).statisticsBold);
    EXPECT_FALSE(table->statColumnBoldFont(1));
    EXPECT_EQ(look(0).statisticsAlignment, Qt::AlignHCenter | Qt::AlignVCenter);
    EXPECT_EQ(look(1).statisticsAlignment, Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(look(0).statisticsColor, ZB::CUiResource::instance()->getColor("clr_table_text_default"));
    EXPECT_TRUE(table->isColBoldFont(0));
    EXPECT_FALSE(table->isColBoldFont(1));
}

TEST_F(CDataTableStatistics, AreWrittenToTheDebugFileValueByValueWhereThatIsWanted)
{
    const log4cxx::LoggerPtr logger = utils::getLogger("KDDbgFile");
    const log4cxx::LevelPtr levelBefore = logger->getLevel();
    const auto appender = std::make_shared<LoggedLines>();
    logger->setLevel(log4cxx::Level::getDebug());
    logger->addAppender(appender);
    add("a", 1.25, 3);
    add("b", std::numeric_limits<double>::max(), std::numeric_limits<int>::max());
    const RecordPtr last = add("c", 2.5, 4);
    sum(last);
    EXPECT_TRUE(appender->lines.empty());
    utils::CLogCenter::instance()->setDebugIdEnabled(sumLogId, true);
    sum(last);
    utils::CLogCenter::instance()->setDebugIdEnabled(sumLogId, false);
    logger->removeAppender(appender);
    logger->setLevel(levelBefore);
    EXPECT_EQ(appender->lines, (std::vector<std::string>{"[dbg_id=51] 1.25", "[dbg_id=51] 2.5",
                                                         "[dbg_id=51]  total = 3.75", "[dbg_id=51] 3", "[dbg_id=51] 4",
                                                         "[dbg_id=51]  total = 7", "[dbg_id=51]  total = 0"}));
}
