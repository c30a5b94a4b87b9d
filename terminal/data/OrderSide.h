#pragma once

namespace Terminal {

enum class OrderSide { Buy, Sell };

} // namespace Terminal
