#pragma once

#include <functional>
#include <string>

#include "kdservice/idata.h"

namespace pagetest {

/// A record without fields, under a 64-bit key of the test's choice; tells when it is destroyed.
class PlainRecord : public kdservice::IData
{
public:
    PlainRecord(std::string key, quint64 hash, std::function<void()> onDestroyed = {});
    ~PlainRecord() override;

    int getInt(int) const override;
    qint64 getLong(int) const override;
    double getDouble(int) const override;
    std::string getString(int) const override { return {}; }
    bool getBool(int) const override { return false; }
    boost::shared_ptr<IData> getIData(int) const override { return {}; }
    std::string getKey() const override { return keyText; }
    quint64 hashKey() const override { return hashOfText; }
    int getBaseId() const override { return 1; }
    const FieldMap &getFieldDes() const override;
    const kdservice::FieldDes *getFieldDes(int) const override { return nullptr; }
    void setData(int, const int &) override {}
    void setData(int, const qint64 &) override {}
    void setData(int, const double &) override {}
    void setData(int, const bool &) override {}
    void setData(int, const std::string &) override {}

private:
    const std::string keyText;
    const quint64 hashOfText;
    const std::function<void()> destroyed;
};

} // namespace pagetest
