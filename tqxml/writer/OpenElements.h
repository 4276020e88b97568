#ifndef TQXML_WRITER_OPENELEMENTS_H
#define TQXML_WRITER_OPENELEMENTS_H

#include <array>
#include <cstddef>
#include <vector>

#include "tqutil/XmlTag.h"

namespace Orn {

/// The tags of the elements that are open, the innermost last. As deep as most documents are it
/// takes no memory of its own. For the writer alone.
class OpenElements {
 public:
  bool empty() const noexcept { return size_ == 0; }
  std::size_t size() const noexcept { return size_; }
  XmlTag::Id back() const noexcept { return (*this)[size_ - 1]; }
  XmlTag::Id operator[](std::size_t i) const noexcept {
    return i < outer_.size() ? outer_[i] : inner_[i - outer_.size()];
  }

  void push_back(XmlTag::Id tag) {
    if (size_ < outer_.size()) {
      outer_[size_] = tag;
    } else {
      inner_.push_back(tag);
    }
    ++size_;
  }
  void pop_back() noexcept {
    if (size_ > outer_.size()) inner_.pop_back();
    --size_;
  }

 private:
  std::array<XmlTag::Id, 8> outer_{};
  std::vector<XmlTag::Id> inner_;
  std::size_t size_ = 0;
};

}  // namespace Orn

#endif
