#pragma once

#include "uicontrolexport.h"

namespace KV {

/// One level of one side of a quote. No value: the largest double and the largest int (quotevalue::noPrice and
/// noVolume), which have to be set: a new one has zeros.
class UICONTROL_API CQuoteData
{
public:
    CQuoteData() = default;
    CQuoteData(double levelPrice, int levelVolume) : price(levelPrice), volume(levelVolume) {}

    double price = 0;
    int volume = 0;
};

} // namespace KV
