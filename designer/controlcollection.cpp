#include "controlcollection.h"

#include "caccountsform.h"
#include "clogform.h"
#include "corderforms.h"
#include "ctableform.h"
#include "formcontrolplugin.h"
#include "order/ccompactselectwidget.h"
#include "order/ccompacttypeselectwidget.h"
#include "order/crateselectwidget.h"

namespace designer {

namespace {

template <typename Control>
QWidget *make(QWidget *parent)
{
    return new Control(parent);
}

QString number(const char *property, int value)
{
    return QStringLiteral("<property name=\"%1\"><number>%2</number></property>")
        .arg(QLatin1String(property))
        .arg(value);
}

QString size(int width, int height)
{
    return QStringLiteral(
               "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>%1</width><height>%2</height></rect>"
               "</property>")
        .arg(width)
        .arg(height);
}

} // namespace

ControlCollection::ControlCollection(QObject *parent) : QObject(parent)
{
    constexpr int ordersOfTheUser = 16204;
    const QList<FormControlPlugin::Description> all{
        {QStringLiteral("KV::CTableForm"), QStringLiteral("ctableform.h"),
         tr("Table over millions of changing records"), size(600, 300) + number("metaId", ordersOfTheUser),
         make<KV::CTableForm>},
        {QStringLiteral("KV::CLogForm"), QStringLiteral("clogform.h"), tr("Log viewer"), size(500, 240),
         make<KV::CLogForm>},
        {QStringLiteral("KV::CLadderForm"), QStringLiteral("corderforms.h"), tr("Price ladder"), size(220, 400),
         make<KV::CLadderForm>},
        {QStringLiteral("KV::COperationForm"), QStringLiteral("corderforms.h"), tr("Direction of an order"),
         size(80, 28), make<KV::COperationForm>},
        {QStringLiteral("KV::CGuardedButtonForm"), QStringLiteral("corderforms.h"),
         tr("Button that guards against repeated clicks"), size(80, 28), make<KV::CGuardedButtonForm>},
        {QStringLiteral("KV::CAccountsForm"), QStringLiteral("caccountsform.h"), tr("Accounts and groups of accounts"),
         size(160, 28), make<KV::CAccountsForm>},
        {QStringLiteral("KV::CRateSelectWidget"), QStringLiteral("order/crateselectwidget.h"),
         tr("Share of funds or position"), size(200, 28), make<KV::CRateSelectWidget>},
        {QStringLiteral("KV::CCompactTypeSelectWidget"), QStringLiteral("order/ccompacttypeselectwidget.h"),
         tr("Kind of contract"), size(200, 28), make<KV::CCompactTypeSelectWidget>},
        {QStringLiteral("KV::CCompactSelectWidget"), QStringLiteral("order/ccompactselectwidget.h"), tr("Contract"),
         size(200, 28), make<KV::CCompactSelectWidget>}};
    for (const FormControlPlugin::Description &description : all)
        controls.append(new FormControlPlugin(description, this));
}

ControlCollection::~ControlCollection() = default;

} // namespace designer
