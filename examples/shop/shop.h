#ifndef SHOP_SHOP_H
#define SHOP_SHOP_H

#include "tqutil/XmlTag.h"

namespace shop {
#include "tqutil/vocabulary/constants.h"
#include "shop.def"
#include "tqutil/vocabulary/end.h"
}  // namespace shop

#endif
