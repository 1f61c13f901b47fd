#pragma once

#include "kdservice/fielddes.h"
#include "kdservice/idata.h"

/// The one kind of record that this program has: something was traded.
class Trade : public kdservice::IData
{
public:
    enum Field : int
    {
        Code = 1,
        Price = 2,
        Quantity = 3
    };
    static constexpr int metaId = 900;

    Trade(std::string tradeKey, std::string tradeCode, double tradePrice, qint64 tradeQuantity);

    /// The record's description, the same for all; what the catalogue answers with.
    static const FieldMap &fields();

    int getInt(int id) const override;
    qint64 getLong(int id) const override;
    double getDouble(int id) const override;
    std::string getString(int id) const override;
    bool getBool(int id) const override;
    boost::shared_ptr<kdservice::IData> getIData(int id) const override;
    std::string getKey() const override { return key; }
    int getBaseId() const override { return metaId; }
    const FieldMap &getFieldDes() const override { return fields(); }
    const kdservice::FieldDes *getFieldDes(int id) const override;

    void setData(int id, const int &value) override;
    void setData(int id, const qint64 &value) override;
    void setData(int id, const double &value) override;
    void setData(int id, const bool &value) override;
    void setData(int id, const std::string &value) override;

private:
    const std::string key;
    std::string code;
    double price;
    qint64 quantity;
};
