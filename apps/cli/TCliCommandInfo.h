#pragma once

#include <cstdint>
#include <span>

#include "host/base/TString.h"

namespace kk {

/// The options that not every command takes; a set of bits.
enum TCliOption : uint32_t {
  coJson = 1,
  coCategory = 2,
  coCreate = 4,
  coIn = 8,
  coTop = 16,
  coText = 32,
  coAt = 64,
  coBeforeEnd = 128,
  coKind = 256,
  coSound = 512,
  coDelete = 1024,
  coPdf = 2048,
  coSource = 4096
};

/// One command of the terminal host as its users read it.
struct TCliCommandInfo {
  TStringView Name;       ///< "list", or "category add" for a command of a family
  size_t MinWords;        ///< how many words must follow the name
  size_t MaxWords;        ///< how many may
  uint32_t Options;       ///< of TCliOption
  TStringView Arguments;  ///< what follows the name, for the help
  TStringView Meaning;    ///< one line
};

inline constexpr size_t cCliAnyNumber = SIZE_MAX;

/// All commands, in the order of the help.
std::span<const TCliCommandInfo> CliCommands();
/// Null if there is no such command.
const TCliCommandInfo* FindCliCommand(TStringView iName);
/// "kaufkobolde-cli list [--json]".
TString CliSynopsis(const TCliCommandInfo& iCommand);
/// The commands whose names are near to a word that is none, for "Meinten Sie"; empty for none.
TString SimilarCliCommands(TStringView iWord);
/// The page that "--help" shows.
TString CliHelpPage();

}  // namespace kk
