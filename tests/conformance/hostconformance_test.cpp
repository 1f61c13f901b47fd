#include "hostconformance.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <limits>

#include "conformance/findingtext.h"
#include "records/record.h"
#include "services/userconfig.h"
#include "theme/themeservice.h"

namespace {

conformance::HostSample referenceSample()
{
    conformance::HostSample sample;
    for (const int metaId : {refhost::MetaMarketOrder, refhost::MetaMarketDeal, refhost::MetaOwnOrder,
                             refhost::MetaOwnDeal, refhost::MetaPosition, refhost::MetaFunds, refhost::MetaQuote})
        for (const char *number : {"1", "2"})
            sample.records.push_back(refhost::makeRecord(metaId, std::to_string(metaId) + '/' + number));
    sample.traderTypes = {kdservice::TraderStock, kdservice::TraderFuture};
    return sample;
}

/// Claims a field that it does not describe, holds a number where it has nothing, and keeps a hash of its own.
class FaultyRecord : public kdservice::IData
{
public:
    int getInt(int) const override { return 0; }
    qint64 getLong(int) const override { return std::numeric_limits<qint64>::max(); }
    double getDouble(int) const override { return std::numeric_limits<double>::max(); }
    std::string getString(int) const override { return std::string(); }
    bool getBool(int) const override { return false; }
    boost::shared_ptr<kdservice::IData> getIData(int) const override { return nullptr; }
    std::string getKey() const override { return "faulty"; }
    quint64 hashKey() const override { return 1; }
    int getBaseId() const override { return -7; }
    const FieldMap &getFieldDes() const override { return fields; }
    const kdservice::FieldDes *getFieldDes(int) const override { return &field; }
    void setData(int, const int &) override {}
    void setData(int, const qint64 &) override {}
    void setData(int, const double &) override {}
    void setData(int, const bool &) override {}
    void setData(int, const std::string &) override {}

private:
    kdservice::FieldDes field;
    FieldMap fields{{12, &field}};
};

} // namespace

TEST(HostConformance, FindsNothingInTheReferenceHost)
{
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    for (const QString &theme : refhost::ThemeService::instance().themes()) {
        ASSERT_TRUE(refhost::ThemeService::instance().setTheme(theme));
        EXPECT_EQ(lines(conformance::checkHost(referenceSample())), "") << theme.toStdString();
    }
    refhost::ThemeService::instance().setScale(1.5);
    EXPECT_EQ(lines(conformance::checkHost(referenceSample())), "");
    refhost::ThemeService::instance().setScale(1.0);
    refhost::setUserConfig(nullptr);
}

TEST(HostConformance, NamesWhatARecordBreaks)
{
    conformance::HostSample sample;
    sample.records = {boost::make_shared<FaultyRecord>(), boost::make_shared<FaultyRecord>(), nullptr};
    sample.traderTypes = {kdservice::TraderStock};
    EXPECT_EQ(lines(conformance::checkRecords(sample)),
              "record \"faulty\": hashKey() is not kdservice::hashOfKey of the key\n"
              "record \"faulty\", field 12: described as another field\n"
              "record \"faulty\": describes a field that it does not have\n"
              "record \"faulty\": a field that it does not have has a value\n"
              "record \"faulty\": hashKey() is not kdservice::hashOfKey of the key\n"
              "record \"faulty\", field 12: described as another field\n"
              "record \"faulty\": describes a field that it does not have\n"
              "record \"faulty\": a field that it does not have has a value\n"
              "faulty: the key of two records\n"
              "faulty: records of one type have two maps of fields\n"
              "sample: a record that is null\n"
              "columns of record type -7 for trader type 1: none\n");
}

TEST(HostConformance, NamesResourcesThatAThemeLacks)
{
    EXPECT_EQ(lines(conformance::checkResources({"clr_nowhere", "img_nowhere", "nonsense"})),
              "clr_nowhere: the same as for a key that no theme has: probably missing\n"
              "img_nowhere: the same as for a key that no theme has: probably missing\n"
              "nonsense: not a resource key\n");
}

TEST(HostConformance, NamesAMissingConfiguration)
{
    refhost::setUserConfig(nullptr);
    EXPECT_EQ(lines(conformance::checkServices()), "KV::CUserConfig: null although somebody is logged in\n");
}
