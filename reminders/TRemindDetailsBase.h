#pragma once

#include <memory>
#include <type_traits>

#include "host/base/Exception.h"
#include "host/base/TObject.h"
#include "reminders/TRemindType.h"

namespace kk {

/// What one kind of a reminder needs when it is due. The texts are fixed when the reminder is made,
/// so that neither the item nor its source is needed then. Owned by the details list of a reminder;
/// one thread at a time.
class TRemindDetailsBase : public TObject {
 public:
  /// A new object of the same class with the same content.
  virtual std::unique_ptr<TRemindDetailsBase> Clone() const = 0;
  /// Takes the content over. Raises EInvalidCast ("TRemindDetailsSound.Copy") if the source is not
  /// of the receiver's class or a descendant of it.
  virtual void Copy(const TRemindDetailsBase& iSource) = 0;
  /// "TRemindDetailsSound"
  virtual TString ClassName() const = 0;
};

/// A class of details as a value.
struct TRemindDetailsBaseClass {
  TStringView ClassName;
  std::unique_ptr<TRemindDetailsBase> (*Create)();
  /// True for an object of the class or of a descendant.
  bool (*IsClassOf)(const TRemindDetailsBase& iDetails);
};

/// The class of the details of a kind.
const TRemindDetailsBaseClass& RemindTypeDetailsClass(TRemindType iType);

/// Writes the operations of TRemindDetailsBase for a class that names itself in cClassName and
/// hands out a tie of its strings in Strings(), both const and not.
template <class Details>
class TRemindDetails : public TRemindDetailsBase {
 public:
  std::unique_ptr<TRemindDetailsBase> Clone() const override {
    auto clone = std::make_unique<Details>();
    clone->Copy(*this);
    return clone;
  }
  void Copy(const TRemindDetailsBase& iSource) override {
    const auto* source = dynamic_cast<const Details*>(&iSource);
    if (source == nullptr) throw EInvalidCast(ClassName() + u".Copy");
    static_cast<Details&>(*this).Strings() = source->Strings();
  }
  TString ClassName() const override { return Details::cClassName; }

  static constexpr TRemindDetailsBaseClass Class() {
    return {Details::cClassName,
            [] { return std::unique_ptr<TRemindDetailsBase>(std::make_unique<Details>()); },
            [](const TRemindDetailsBase& iDetails) {
              return dynamic_cast<const Details*>(&iDetails) != nullptr;
            }};
  }
};

}  // namespace kk
