#ifndef FIRST_ORDERS_H
#define FIRST_ORDERS_H

#include "tqutil/XmlTag.h"

namespace orders {
#include "tqutil/vocabulary/constants.h"
#include "orders.def"
#include "tqutil/vocabulary/end.h"
}  // namespace orders

#endif
