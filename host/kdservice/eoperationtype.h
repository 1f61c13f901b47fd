#pragma once

namespace kdservice {

/// What an order does. Controls pass it on; a code field offers only what can be traded unless there is none.
enum EOperationType : int
{
    OperationNone = 0,
    OperationBuy = 1,
    OperationSell = 2,
    OperationOpen = 3,
    OperationClose = 4,
    OperationSubscribe = 5
};

} // namespace kdservice
