#ifndef VOCABULARY_FAILURE_H
#define VOCABULARY_FAILURE_H

#include <stdexcept>

namespace vocabulary {

/// What keeps the program from doing what it was asked; the text is for the user, and says where.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace vocabulary

#endif
