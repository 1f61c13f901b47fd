#include <QtCore/QMap>
#include <limits>

#include "checks.h"
#include "kdservice/fielddes.h"
#include "kdservice/idata.h"
#include "kdservice/keyhash.h"
#include "kdservice/typemanager.h"
#include "zb/ibasehpftabledata.h"

namespace conformance {

namespace {

using Record = boost::shared_ptr<kdservice::IData>;

/// A row that leaves everything to the host's defaults that can be left to them.
class PlainRow : public ZB::IBaseHpfTableData
{
public:
    QString getDisplayQString(int) override { return QStringLiteral("shown"); }
    QString getQString(int) override { return QStringLiteral("raw"); }
    int getInt(int) override { return 0; }
    double getDouble(int) override { return 0; }
    qint64 getLongLong(int) override { return 0; }
    const QColor *getColor(int) override { return nullptr; }
    std::string key() override { return "600000.SH/甲"; }
};

void checkRowDefaults(Report &report)
{
    PlainRow row;
    const QString subject = QStringLiteral("ZB::IBaseHpfTableData::");
    report.expectText(subject + QStringLiteral("qsKey"), row.qsKey(), QStringLiteral("600000.SH/甲"));
    report.expect(row.hashKey() == kdservice::hashOfKey(row.key()), subject + QStringLiteral("hashKey"),
                  QStringLiteral("not kdservice::hashOfKey of the key"));
    report.expectText(subject + QStringLiteral("getFilterQString"), row.getFilterQString(0), QStringLiteral("shown"));
    report.expectText(subject + QStringLiteral("getDisplayUnit"), row.getDisplayUnit(0), QString());
    report.expectText(subject + QStringLiteral("getItemIconKey"), row.getItemIconKey(0), QString());
    report.expect(row.getBackgroundColor(0) == nullptr, subject + QStringLiteral("getBackgroundColor"),
                  QStringLiteral("not null"));
    report.expect(row.isFlashChange(0), subject + QStringLiteral("isFlashChange"), QStringLiteral("false"));
}

/// Whether every kind of access says that there is nothing.
bool answersNothing(const kdservice::IData &record, int id)
{
    return record.getInt(id) == std::numeric_limits<int>::max() &&
           record.getLong(id) == std::numeric_limits<qint64>::max() &&
           record.getDouble(id) == std::numeric_limits<double>::max() && record.getString(id).empty() &&
           !record.getBool(id) && !record.getIData(id);
}

void checkRecord(Report &report, const Record &record)
{
    const std::string key = record->getKey();
    const QString subject = QStringLiteral("record \"%1\"").arg(QString::fromStdString(key));
    report.expect(!key.empty(), subject, QStringLiteral("an empty key"));
    report.expect(record->hashKey() == kdservice::hashOfKey(key), subject,
                  QStringLiteral("hashKey() is not kdservice::hashOfKey of the key"));
    const kdservice::IData::FieldMap &fields = record->getFieldDes();
    report.expect(!fields.empty(), subject, QStringLiteral("no fields"));
    int unknown = 1;
    for (const auto &entry : fields) {
        const QString field = subject + QStringLiteral(", field %1").arg(entry.first);
        report.expect(entry.second != nullptr, field, QStringLiteral("a description that is null"));
        if (!entry.second)
            continue;
        report.expect(entry.second->fieldId == entry.first, field, QStringLiteral("described as another field"));
        report.expect(record->getFieldDes(entry.first) == entry.second, field,
                      QStringLiteral("getFieldDes(id) gives another description than getFieldDes()"));
        if (entry.second->dataType == kdservice::ExtString)
            report.expect(record->getDouble(entry.first) == std::numeric_limits<double>::max(), field,
                          QStringLiteral("a text that answers as a number"));
        if (entry.first == unknown)
            ++unknown;
    }
    report.expect(record->getFieldDes(unknown) == nullptr, subject,
                  QStringLiteral("describes a field that it does not have"));
    report.expect(answersNothing(*record, unknown), subject,
                  QStringLiteral("a field that it does not have has a value"));
}

void checkColumns(Report &report, int metaId, kdservice::EVxTraderType traderType)
{
    const QString subject = QStringLiteral("columns of record type %1 for trader type %2").arg(metaId).arg(traderType);
    kdservice::TypeManager *types = kdservice::TypeManager::instance();
    const kdservice::TypeManager::FieldSet fields = types->getAllFields({metaId}, traderType);
    report.expect(!fields.empty(), subject, QStringLiteral("none"));
    for (const kdservice::FieldDes *field : fields)
        report.expect(!types->getFieldChsNameByType(field, traderType).isEmpty(), subject,
                      QStringLiteral("field %1 has no name").arg(field->fieldId));
}

} // namespace

Findings checkRecords(const HostSample &sample)
{
    Report report;
    checkRowDefaults(report);
    QMap<int, Record> kinds;
    QMap<QString, Record> keys;
    for (const Record &record : sample.records) {
        report.expect(record != nullptr, QStringLiteral("sample"), QStringLiteral("a record that is null"));
        if (!record)
            continue;
        checkRecord(report, record);
        const QString key = QString::fromStdString(record->getKey());
        report.expect(!keys.contains(key), key, QStringLiteral("the key of two records"));
        keys.insert(key, record);
        const Record first = kinds.value(record->getBaseId(), record);
        report.expect(&first->getFieldDes() == &record->getFieldDes(), key,
                      QStringLiteral("records of one type have two maps of fields"));
        kinds.insert(record->getBaseId(), first);
    }
    for (const int metaId : kinds.keys())
        for (const kdservice::EVxTraderType traderType : sample.traderTypes)
            checkColumns(report, metaId, traderType);
    report.expect(kdservice::TypeManager::instance()->getAllFields({-1}, kdservice::TraderNone).empty(),
                  QStringLiteral("kdservice::TypeManager::getAllFields"),
                  QStringLiteral("columns of an unknown record type"));
    return report.take();
}

} // namespace conformance
