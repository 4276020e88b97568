#include "tqutil/UtilExceptions.h"

namespace Orn {

TagException::~TagException() = default;
TagException* TagException::clone() const { return new TagException(*this); }

EncodingException::~EncodingException() = default;
EncodingException* EncodingException::clone() const { return new EncodingException(*this); }

}  // namespace Orn
