#pragma once

#include "host/base/IInterface.h"

namespace kk {

/// What a source proposes as the text of a reminder. Main thread.
class IReminderText : public IInterface {
 public:
  using TParent = IInterface;
  static constexpr TGuid cIid = GuidLiteral("{43D9C9AB-599C-4DCD-B2F8-7115B6610367}");

  virtual TString GetCaption() const = 0;
  virtual TString GetText() const = 0;
  virtual TString GetLink() const = 0;
};

}  // namespace kk
