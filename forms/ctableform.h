#pragma once

#include "cformcontrol.h"
#include "kdservice/evxtradertype.h"

namespace KV {

class CHpfDataTable;

/// A high-performance table on a form. `eventId` is the table's id, under which its settings are kept.
class FORMS_API CTableForm : public CFormControl
{
    Q_OBJECT
    /// Meta id of the records, which decides the columns.
    Q_PROPERTY(int metaId READ metaId WRITE setMetaId)
    /// A kdservice::EVxTraderType.
    Q_PROPERTY(int traderType READ traderType WRITE setTraderType)
    Q_PROPERTY(bool paged READ isPaged WRITE setPaged)

public:
    explicit CTableForm(QWidget *parent = nullptr);
    ~CTableForm() override;

    CHpfDataTable *table() const;

    int metaId() const { return meta; }
    void setMetaId(int metaId);
    int traderType() const { return trader; }
    void setTraderType(int traderType);
    bool isPaged() const { return pages; }
    void setPaged(bool paged);

protected:
    QWidget *makeControl() override;

private:
    int meta = 0;
    int trader = kdservice::TraderStock;
    bool pages = false;
};

} // namespace KV
