#include "table/chpfdatatable.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

#include "model/chpfdatamodel.h"
#include "model/chpfextradatamodel.h"
#include "model/chpfthreaddatamodel.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "pagemodel/pagemenugatherer.h"
#include "utils/clogcenter.h"

namespace KV {

namespace {

constexpr int pagedFlag = 1 << 30;
constexpr int atOnceMilliseconds = 12; ///< what a click may wait for its result to show with the next frame

void logTradeType(int tableId, kdservice::EVxTraderType traderType)
{
    const log4cxx::LoggerPtr logger = utils::getStdLogger();
    if (!logger->isInfoEnabled())
        return;
    const std::string message = fmt::format("[table|{0}] trade_type = {1}", tableId, static_cast<int>(traderType));
    LOG4CXX_INFO(logger, fmt::format("[{0}] [{1}] {2}", 3534, "KV::CHpfDataTable::setTradeType", message));
}

} // namespace

CHpfDataTable::CHpfDataTable(int tableId, int metaId, QWidget *parent, kdservice::EVxTraderType traderType, bool paged)
    : ZB::CBaseHighPerformanceTable(tableId, parent, ZB::MenuAll)
{
    CHpfDataTable::themeChanged();
    addTableFlag(ZB::TableRowNumbers);
    connect(&pageWork, &QTimer::timeout, this, &CHpfDataTable::workOn);
    const auto model = boost::make_shared<CHpfDataModel>(metaId, traderType);
    CHpfDataTable::setDataModel(model.get());
    ownModel = model.get();
    if (paged) {
        addTableFlag(pagedFlag);
        setPagingQueryType(ZB::PagingByIndex);
        setTotalCount(0);
    }
}

CHpfDataTable::~CHpfDataTable()
{
    saveSettingsNow();
    if (auto *loaded = dynamic_cast<CHpfThreadDataModel *>(dataModel.get()))
        loaded->dismiss();
    else if (dataModel)
        dataModel->clear();
}

void CHpfDataTable::setDataModel(ZB::IBaseHpfTableModel *model)
{
    auto *adopted = dynamic_cast<CHpfDataModel *>(model);
    const boost::shared_ptr<CHpfDataModel> shared = adopted != nullptr ? adopted->weak_from_this().lock() : nullptr;
    const boost::shared_ptr<CHpfDataModel> former = dataModel;
    dataModel = shared;
    if (shared)
        installDataModel(shared);
    else
        ZB::CBaseHighPerformanceTable::setDataModel(model);
    if (former != shared)
        leaveModel(former);
    for (int column = 0; shared && column < shared->columnCount(); ++column)
        applyColumnProperties(column);
}

void CHpfDataTable::leaveModel(const boost::shared_ptr<CHpfDataModel> &former)
{
    firstFitDone = false;
    if (!former || former.get() != ownModel)
        return;
    ownModel = nullptr;
    // The caller's hold and one per row: nobody else can reach the rows any more, and they would keep each other.
    if (former.use_count() == 1 + former->allSize())
        former->clear();
}

void CHpfDataTable::applyColumnProperties(int column)
{
    CHpfDataColumnProperty property;
    dataModel->getColumnProperty(column, property);
    setColumnAlignment(column, property.alignment);
    setStatColumnAlignment(column, property.alignment);
    setColumnBoldFont(column, property.flag11);
    setColumnFilterable(column, property.flag8);
    setColumnInList(column, property.flagDefaultOn);
    setColumnFieldId(column, property.fieldId);
}

const boost::shared_ptr<CHpfDataModel> &CHpfDataTable::getDataModel() const
{
    return dataModel;
}

CHpfExtraDataModel *CHpfDataTable::getExtraDataModel() const
{
    return dataModel ? dataModel->getExtraDataModel() : nullptr;
}

void CHpfDataTable::setPageModel(const boost::shared_ptr<CHpfPageDataModel> &model)
{
    menuGatherer.reset();
    pageWork.stop();
    if (pageModel)
        pageModel->setWorkPerCall(-1);
    pageModel = model;
    if (!model)
        return;
    model->setWorkPerCall(atOnceMilliseconds);
    giveWaitingFilters();
    markPageSort();
    if (tableFlags() & ZB::TablePaged)
        setShownPage(model->startIndex(), model->pageCount(), model->shownSize());
}

int CHpfDataTable::addColumn(const CHpfDataColumnProperty &property, bool extra, bool visible, const QString &cellText)
{
    if (!dataModel)
        return -1;
    const int column = dataModel->addColumn(property, cellText, extra);
    addTableColumn(column);
    applyColumnProperties(column);
    setColumnVisible(column, visible);
    return column;
}

int CHpfDataTable::getColumnIdByFileId(int fieldId) const
{
    return dataModel ? dataModel->fieldColumnMap().value(fieldId, -1) : -1;
}

void CHpfDataTable::setColumnStatEnable(int column, bool enable)
{
    if (dataModel)
        dataModel->setColumnStatEnable(column, enable);
    if (pageModel)
        pageModel->setColumnStatEnable(column, enable);
}

void CHpfDataTable::setAppendSeq(bool append)
{
    if (dataModel)
        dataModel->setAppendSeq(append);
    if (pageModel)
        pageModel->setAppendSeq(append);
}

void CHpfDataTable::setTradeType(kdservice::EVxTraderType traderType)
{
    if (!dataModel || dataModel->tradeType() == traderType)
        return;
    logTradeType(tableId(), traderType);
    for (int column = 0; column < dataModel->columnCount(); ++column)
        setColumnDelegate(column, nullptr);
    dataModel->setTradeType(traderType);
    dataModel->clearFilter();
    clearFilter();
    setDataModel(dataModel.get());
    firstFitDone = false;
    updateTable();
}

kdservice::EVxTraderType CHpfDataTable::tradeType() const
{
    return dataModel ? dataModel->tradeType() : kdservice::TraderNone;
}

} // namespace KV
