#include "ourtable.h"

#include <QtCore/QCoreApplication>
#include <boost/make_shared.hpp>

#include "stocktable.h"

namespace bench {

OurTable::OurTable()
    : model(boost::make_shared<KV::CHpfThreadDataModel>(orderMetaId(), kdservice::TraderStock)),
      table(new KV::CHpfDataTable(990, orderMetaId(), nullptr, kdservice::TraderStock, false))
{
    table->setDataModel(model.get());
    table->resize(viewWidth, viewHeight);
    table->show();
    for (int column = 0; column < model->columnCount(); ++column)
        table->setColumnWidth(column, columnWidth);
    QCoreApplication::processEvents();
}

void OurTable::paint()
{
    table->updateTable();
    table->repaint();
}

void OurTable::load(Records records)
{
    const auto count = static_cast<int>(records.size());
    model->addDatas(std::move(records));
    while (model->allSize() < count)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    paint();
}

void OurTable::update(const Records &records)
{
    table->updateDatas(records, false);
}

void OurTable::updateEach(const Records &records)
{
    for (const auto &record : records)
        table->updateData(record, false);
}

int OurTable::column(int fieldId) const
{
    return table->getColumnIdByFileId(fieldId);
}

int OurTable::visibleCells() const
{
    return (viewHeight / rowHeight - 2) * model->columnCount(); // header and statistics row take a row each
}

} // namespace bench
