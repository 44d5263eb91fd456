#pragma once

#include <optional>
#include <vector>

#include "apps/cli/TCliCommandInfo.h"

namespace kk {

/// A call of the program, taken apart and checked against the table of commands.
struct TCliArguments {
  TString Data;  ///< empty for the user's own folders
  bool Verbose = false;
  bool RestoreBackup = false;
  bool Yes = false;
  bool Help = false;
  bool Version = false;

  /// Null for a host's command line, for help and version.
  const TCliCommandInfo* Command = nullptr;
  bool IsCommand(TStringView iName) const { return Command != nullptr && Command->Name == iName; }
  std::vector<TString> Words;
  bool Json = false;
  bool Create = false;
  bool Top = false;
  std::optional<TString> Category;
  std::vector<TString> Categories;  ///< the same, all of them
  std::vector<TString> Sources;
  std::optional<TString> In;
  std::optional<std::vector<TString>> Text;  ///< lines
  std::optional<TString> At;
  std::optional<TString> BeforeEnd;
  std::optional<TString> Kind;
  std::optional<TString> Sound;
  std::optional<TString> Pdf;
  bool Delete = false;

  /// "-rem" and "-remimport" with all that follows, as it stands. Empty for a command.
  std::vector<TString> HostLine;

  /// Takes the arguments behind the program's name. No arguments ask for help. Raises ECliUsage
  /// with the right form as hint.
  static TCliArguments Parse(const std::vector<TString>& iArguments);
};

}  // namespace kk
