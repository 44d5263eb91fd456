#include "apps/desktop/shell/TDroppedText.h"

#include <QMimeData>
#include <QUrl>

#include "apps/desktop/skin/QtText.h"
#include "host/common/TFileHelper.h"

namespace kk {
namespace {

constexpr TStringView cFileScheme = u"file:";
constexpr TStringView cExportFile = u".wch";

bool IsFileAddress(TStringView iWord) {
  return SameText(iWord.substr(0, cFileScheme.size()), cFileScheme);
}

// A path has no control characters, and a web address is none, whatever lies on the disk.
bool IsFileName(TStringView iWord) {
  if (WithoutControlCharacters(iWord) != iWord || iWord.find(u"://") != TStringView::npos) {
    return false;
  }
  for (const TStringView begin : {u"/", u"./", u"../"}) {
    if (StartsWith(iWord, begin)) return true;
  }
  return FileExists(iWord);
}

}  // namespace

void TDroppedText::AddLine(TStringView iLine) {
  const TString line = Trim(iLine);
  if (line.empty() || line.size() > cMaxLength || Text.size() + line.size() >= cMaxLength) return;
  if (!Text.empty()) Text += u'\n';
  Text += line;
}

void TDroppedText::Add(const TDroppedText& iOther) {
  for (const TString& line : Split(iOther.Text, u'\n')) AddLine(line);
  Files.insert(Files.end(), iOther.Files.begin(), iOther.Files.end());
}

TDroppedText TDroppedText::OfWord(TStringView iWord) {
  TDroppedText result;
  if (iWord.size() > cMaxLength) return result;
  if (IsFileAddress(iWord)) {
    const QString file = QUrl(ToQt(iWord)).toLocalFile();
    if (!file.isEmpty()) result.Files.push_back(FromQt(file));
  } else if (IsFileName(iWord)) {
    result.Files.emplace_back(iWord);
  } else {
    result.AddLine(iWord);
  }
  return result;
}

TDroppedText TDroppedText::OfMime(const QMimeData& iData) {
  TDroppedText result;
  for (const QUrl& url : iData.urls()) {
    if (url.isLocalFile()) {
      result.Files.push_back(FromQt(url.toLocalFile()));
    } else {
      result.AddLine(FromQt(url.toString(QUrl::FullyEncoded)));
    }
  }
  if (!result.IsEmpty() || !iData.hasText()) return result;
  for (const TString& line : Split(FromQt(iData.text()), u'\n')) {
    IsFileAddress(Trim(line)) ? result.Add(OfWord(Trim(line))) : result.AddLine(line);
  }
  return result;
}

bool TDroppedText::IsExportFile(TStringView iFileName) {
  return iFileName.size() > cExportFile.size() &&
         SameText(iFileName.substr(iFileName.size() - cExportFile.size()), cExportFile);
}

}  // namespace kk
