#include "recordwindow.h"

#include <QtTest/QTest>
#include <QtWidgets/QVBoxLayout>

#include "services/userconfig.h"

namespace testrecords {

bool OpenTable::passFilter(const RecordPtr &record, int, int type, QString text) const
{
    if (whilePassing)
        whilePassing(record);
    return type != 7 || record->getInt(TicketLots) >= text.toInt();
}

void OpenTable::showData(const RecordPtr &record, int row, int firstColumn)
{
    ++shownRecords;
    if (whileShowing)
        whileShowing(record);
    KV::CDataTable::showData(record, row, firstColumn);
}

void OpenTable::showDataFieldImpl(bool flag, const RecordPtr &record, int row, int column,
                                  const kdservice::FieldDes *field, int fieldId, int trader)
{
    shownFields.push_back(fieldId);
    if (flag)
        changedFields.push_back(fieldId);
    if (whileFilling)
        whileFilling(row);
    KV::CDataTable::showDataFieldImpl(flag, record, row, column, field, fieldId, trader);
}

RecordWindow::RecordWindow()
{
    registerTypes();
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    window = std::make_unique<EventWindow>();
    window->resize(900, 400);
    table = new OpenTable(tableId, MetaTicket, window.get());
    auto *layout = new QVBoxLayout(window.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(table);
    window->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    table->updateTable();
}

RecordWindow::~RecordWindow()
{
    window.reset();
    refhost::setUserConfig(nullptr);
}

std::string RecordWindow::shown() const
{
    std::string lines;
    for (const int row : table->rows()) {
        QStringList texts;
        for (int column = 0; column < table->columnCount(); ++column)
            texts << table->cellText(row, column);
        const auto record = table->getData(row);
        lines += (record ? record->getKey() : "?") + ": " + texts.join(QLatin1Char('|')).toStdString() + '\n';
    }
    return lines;
}

std::string RecordWindow::keys() const
{
    std::string all;
    for (const int row : table->rows()) {
        const auto record = table->getData(row);
        all += (all.empty() ? "" : " ") + (record ? record->getKey() : "?");
    }
    return all;
}

std::string RecordWindow::statistics() const
{
    QStringList texts;
    for (int column = 0; column < table->columnCount(); ++column)
        texts << table->statText(column);
    return texts.join(QLatin1Char('|')).toStdString();
}

void RecordWindow::filter(int column, int type, QSet<QString> values)
{
    table->onFilterTrigger(column, type, values);
}

void RecordWindow::addTickets(int count)
{
    for (int number = 1; number <= count; ++number)
        table->updateData(fullTicket(std::string(1, static_cast<char>('a' + number - 1)), number), false);
}

} // namespace testrecords
