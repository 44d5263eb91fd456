#include "apps/desktop/print/PrintFile.h"

#include <istream>
#include <iterator>
#include <memory>
#include <ostream>

#include "apps/desktop/print/PdfDocument.h"
#include "host/base/Exception.h"
#include "host/common/TFileHelper.h"
#include "host/printing/PrintContentJson.h"

namespace kk {
namespace {

void Write(const std::string& iPath, const std::vector<TPrintContent>& iContents) {
  std::vector<std::unique_ptr<TPrintLayout>> layouts;
  std::vector<TPrintedPages> parts;
  for (const TPrintContent& content : iContents) {
    layouts.push_back(std::make_unique<TPrintLayout>(content));
    parts.push_back({layouts.back().get(), 1, layouts.back()->PageCount()});
  }
  WriteFileAtomically(FromUtf8(iPath), ToPdf(parts));
}

}  // namespace

int PrintFile(const std::vector<std::string>& iArguments, std::istream& ioInput,
              std::ostream& ioErrors) {
  try {
    if (iArguments.size() != 1) throw Exception(u"Aufruf: kaufkobolde-print DATEI < AUFTRAG");
    const std::string json{std::istreambuf_iterator<char>(ioInput), {}};
    Write(iArguments[0], PrintContentsFromJson(json));
    return 0;
  } catch (const std::exception& e) {
    ioErrors << "kaufkobolde-print: " << ToUtf8(ToSingleLine(MessageOf(e))) << std::endl;
    return 1;
  }
}

}  // namespace kk
