#include "tqxml/foundation/Exceptions.h"

namespace Orn {

StateException::~StateException() = default;
StateException* StateException::clone() const { return new StateException(*this); }

IllegalArgException::~IllegalArgException() = default;
IllegalArgException* IllegalArgException::clone() const { return new IllegalArgException(*this); }

RuntimeException::~RuntimeException() = default;
RuntimeException* RuntimeException::clone() const { return new RuntimeException(*this); }

}  // namespace Orn
