#include "desk/ownrecordspanel.h"

#include "model/chpfdatamodel.h"
#include "table/chpfdatatable.h"

namespace terminal {

namespace {

constexpr int activatedEvent = 69;

} // namespace

OwnRecordsPanel::OwnRecordsPanel(const QString &caption, int tableId, int metaId, int ofAccount, int ofDay,
                                 QWidget *parent)
    : TablePanel(caption, tableId, metaId, parent), accountField(ofAccount), dayField(ofDay)
{
    table().setAppendSeq(false);
}

OwnRecordsPanel::~OwnRecordsPanel() = default;

void OwnRecordsPanel::beginDay(const QString &account, int day)
{
    const int accountColumn = table().getColumnIdByFileId(accountField);
    const int dayColumn = table().getColumnIdByFileId(dayField);
    QVector<QString> past;
    for (const KV::CHpfDataTable::RowPtr &row : table().getAllDatas())
        if (row->getQString(accountColumn) == account && row->getInt(dayColumn) != day)
            past.append(row->qsKey());
    if (!past.isEmpty())
        table().removeDatasByKey(past, /* refresh */ false);
}

void OwnRecordsPanel::say(const QString &text)
{
    message = text;
    refresh();
}

void OwnRecordsPanel::setMark(const QString &text)
{
    mark = text;
    refresh();
}

void OwnRecordsPanel::refresh()
{
    TablePanel::refresh();
    for (const QString &part : {mark, message})
        if (!part.isEmpty())
            setSummary(summary() + QStringLiteral(" · ") + part);
}

bool OwnRecordsPanel::handleEvent(int event, int, int, QString text, void *)
{
    if (event != activatedEvent)
        return false;
    Q_EMIT activated(text.toLongLong());
    return true;
}

} // namespace terminal
