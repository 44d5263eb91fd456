#pragma once

#include <stdexcept>
#include <string>

#include "host/base/TString.h"

namespace kk {

/// The base of all failures of this system. The message is German where a user can see it.
class Exception : public std::exception {
 public:
  explicit Exception(TStringView iMessage) : FMessage(iMessage), FWhat(ToUtf8(iMessage)) {}

  const TString& Message() const { return FMessage; }
  const char* what() const noexcept override { return FWhat.c_str(); }

 private:
  TString FMessage;
  std::string FWhat;
};

/// An index outside of a list.
class EListError : public Exception {
 public:
  using Exception::Exception;
};

/// A text that can't be turned into the value asked for.
class EConvertError : public Exception {
 public:
  using Exception::Exception;
};

/// A value outside of its bounds.
class ERangeError : public Exception {
 public:
  using Exception::Exception;
};

/// An object that is not of the class asked for.
class EInvalidCast : public Exception {
 public:
  using Exception::Exception;
};

/// A file, a folder or another thing of the machine that refused.
class EInOutError : public Exception {
 public:
  using Exception::Exception;
};

/// The index as a position in a list of so many entries; EListError if there is none such.
size_t CheckedIndex(int iIndex, size_t iCount);

/// The message of any exception: UTF-16 for ours, decoded for std::exception's.
TString MessageOf(const std::exception& iException);

}  // namespace kk
