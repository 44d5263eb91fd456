#pragma once

#include <vector>

#include "host/base/TString.h"

namespace kk {

/// A whole command line, taken apart into parameters: a name that begins with "-", and a value.
///
/// Blanks separate arguments. Inside of double quotes a blank is a character like any other, and a
/// quote stands there doubled or with a backslash before it; a backslash before any other character
/// stands for itself, before a closing quote it is doubled. An argument in quotes is never a name,
/// so a value may begin with "-". The value is what follows up to the next name, several arguments
/// with a blank between them; empty if there is none. What stands before the first name (the
/// program) is passed over. A quote that is not closed reaches to the end. One thread at a time.
class TCmdParams {
 public:
  explicit TCmdParams(TStringView iLine);

  int Count() const { return static_cast<int>(FParams.size()); }
  /// With the "-", as it stands in the line. An index out of range raises EListError, also below.
  const TString& GetName(int iIndex) const;
  const TString& GetValue(int iIndex) const;

  /// An argument as it has to stand in a line so that it comes back equal: in quotes, unless it is
  /// plain.
  static TString Quote(TStringView iArgument);
  /// The line of a program's arguments. Those that begin with "-" count as names and, if they are
  /// plain, stay without quotes; for a value that begins with "-", use Quote.
  static TString Join(const std::vector<TString>& iArguments);

 private:
  struct TParam {
    TString Name;
    TString Value;
  };
  std::vector<TParam> FParams;
};

}  // namespace kk
