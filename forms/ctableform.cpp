#include "ctableform.h"

#include "table/chpfdatatable.h"

namespace KV {

CTableForm::CTableForm(QWidget *parent) : CFormControl(parent) {}

CTableForm::~CTableForm() = default;

CHpfDataTable *CTableForm::table() const
{
    return static_cast<CHpfDataTable *>(heldControl());
}

void CTableForm::setMetaId(int metaId)
{
    meta = metaId;
    renew();
}

void CTableForm::setTraderType(int traderType)
{
    trader = traderType;
    renew();
}

void CTableForm::setPaged(bool paged)
{
    pages = paged;
    renew();
}

QWidget *CTableForm::makeControl()
{
    return new CHpfDataTable(eventId(), meta, this, static_cast<kdservice::EVxTraderType>(trader), pages);
}

} // namespace KV
