#ifndef GUIDE_SHOP_H
#define GUIDE_SHOP_H

#include "tqutil/XmlTag.h"

namespace shop {
#include "tqutil/vocabulary/constants.h"
#include "shop.def"
#include "tqutil/vocabulary/end.h"
}  // namespace shop

#endif
