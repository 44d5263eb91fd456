#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <fstream>

#include "PictureFont.h"
#include "TPdfReader.h"
#include "apps/desktop/print/PdfDocument.h"
#include "tests/support/TTempFolder.h"
#include "tests/support/qt/OffscreenQt.h"

namespace kk {

/// A list as the watch list prints it, and the PDF that becomes of it.
class TPrintWorld : public testing::Test {
 protected:
  TPrintWorld() {
    NeedQt();
    NeedPictureFont();
  }

  static TPrintContent List(size_t iRows) {
    TPrintContent content{
        u"Kaufkobolde 7 -> Beobachten -> Küche",
        u"Gedruckt am: 20.11.2026 18:30",
        u"Webseite",
        {u"Name", u"Preis", u"Verfügbarkeit", u"Anbieter"},
        {u"Name", u"Preis", u"Verfügbarkeit", u"Anbieter", u"Ende", u"Adresse", u"Bild"},
        {}};
    for (size_t i = 1; i <= iRows; ++i) content.Rows.push_back(Row(i));
    return content;
  }
  static std::vector<TString> Row(size_t iNumber) {
    return {Format(u"Artikel Nr. %d", {iNumber}),
            Format(u"%d,99 €", {iNumber * 7}),
            u"auf Lager",
            u"Töpfe & Söhne",
            u"",
            Format(u"https://shop.example/artikel/%d", {iNumber}),
            u"https://bilder.example/x.jpg"};
  }
  /// Writes the list as a PDF and opens it.
  TPdfReader Pdf(const TPrintContent& iContent) const {
    const TPrintLayout layout(iContent);
    return Write(ToPdf({{&layout, 1, layout.PageCount()}}));
  }
  TPdfReader Write(const std::string& iBytes) const {
    const std::string path = Folder.Path() + "/liste.pdf";
    std::ofstream(path, std::ios::binary) << iBytes;
    return TPdfReader(path);
  }

  TTempFolder Folder;
};

}  // namespace kk
