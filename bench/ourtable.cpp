#include "ourtable.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QPixmap>
#include <boost/make_shared.hpp>

#include "grid/gridview.h"
#include "model/chpfdata.h"
#include "stocktable.h"

namespace bench {

OurTable::OurTable()
    : model(boost::make_shared<KV::CHpfThreadDataModel>(orderMetaId(), kdservice::TraderStock)),
      table(new KV::CHpfDataTable(990, orderMetaId(), nullptr, kdservice::TraderStock, false)),
      grid(table->findChild<ZB::GridView *>())
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

std::vector<OurCell> OurTable::cells() const
{
    std::vector<quint64> rows;
    std::vector<int> columns;
    const QPoint middle = grid->rect().center();
    for (int y = 0; y < grid->height(); ++y)
        if (const auto [row, column] = grid->cellAt(QPoint(middle.x(), y));
            column >= 0 && (rows.empty() || rows.back() != row))
            rows.push_back(row);
    for (int x = 0; x < grid->width(); ++x)
        if (const int column = grid->cellAt(QPoint(x, middle.y())).second;
            column >= 0 && (columns.empty() || columns.back() != column))
            columns.push_back(column);
    std::vector<OurCell> found;
    auto shown = static_cast<int>(grid->firstVisibleRow());
    for (const quint64 row : rows) {
        for (const int column : columns)
            found.push_back({shown, column, grid->cellRect(row, column)});
        ++shown;
    }
    return found;
}

boost::shared_ptr<kdservice::IData> OurTable::recordAt(int row) const
{
    const auto data = boost::dynamic_pointer_cast<KV::CHpfData>(model->getData(row));
    return data ? data->getIData() : nullptr;
}

QImage OurTable::picture() const
{
    return grid->grab().toImage();
}

} // namespace bench
