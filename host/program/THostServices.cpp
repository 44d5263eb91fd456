#include "host/program/THostServices.h"

#include "host/common/TFileHelper.h"

namespace kk {
namespace {

constexpr TStringView cDataFileName = u"watchlist.dat";
constexpr TStringView cIniFileName = u"/kaufkobolde.ini";

// The first step of all: from here on everybody knows where things lie.
const TString& InstallFolders(TStringView iOneFolder) {
  SetHostFolders(DefaultHostFolders(iOneFolder));
  return HostFolders().Data;
}

}  // namespace

THostServices::THostServices(const TOptions& iOptions)
    : FLock(InstallFolders(iOptions.OneFolder)),
      FLogFile(DefaultLogFileName(), iOptions.Verbose),
      FLogInstalled(&SetLogSink, &FLogFile),
      FIniFile(HostFolders().Config + TString(cIniFileName)),
      FIniFileInstalled(&SetIniFile, &FIniFile) {}

TDataFileGuard THostServices::DataGuard() const {
  return TDataFileGuard(TFileHelper::GetAppDataFileName(cDataFileName));
}

}  // namespace kk
