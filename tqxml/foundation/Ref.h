#ifndef TQXML_FOUNDATION_REF_H
#define TQXML_FOUNDATION_REF_H

#include <utility>

namespace Orn {

/// How the references on a record are counted: `retain` adds one and `release` gives one back,
/// which may end the record. Specialised where the record is not known to those who hold
/// references.
template <class Record>
struct RefCount {
  static void retain(Record* record) noexcept { Record::retain(record); }
  static void release(Record* record) noexcept { Record::release(record); }
};

/// One counted reference on a record, or none.
template <class Record>
class Ref {
 public:
  Ref() noexcept = default;
  /// Takes over the reference that the caller holds.
  static Ref adopt(Record* record) noexcept {
    Ref ref;
    ref.record_ = record;
    return ref;
  }
  /// Takes a reference of its own.
  explicit Ref(Record* record) noexcept : record_(record) {
    if (record_ != nullptr) RefCount<Record>::retain(record_);
  }
  Ref(Ref const& other) noexcept : Ref(other.record_) {}
  Ref(Ref&& other) noexcept : record_(std::exchange(other.record_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(record_, other.record_);
    return *this;
  }
  ~Ref() {
    if (record_ != nullptr) RefCount<Record>::release(record_);
  }

  /// Gives the reference to the caller, who must see to its release.
  [[nodiscard]] Record* detach() noexcept { return std::exchange(record_, nullptr); }

  Record* get() const noexcept { return record_; }
  Record* operator->() const noexcept { return record_; }
  explicit operator bool() const noexcept { return record_ != nullptr; }

 private:
  Record* record_ = nullptr;
};

}  // namespace Orn

#endif
