#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "sources/page/TPageReader.h"

namespace kk {
namespace {

namespace fs = std::filesystem;

// Pages of real shops are not part of this repository. Where they lie, they are read from there.
fs::path PagesFolder() {
  const char* given = std::getenv("KK_REAL_PAGES");
  return given != nullptr ? fs::path(given)
                          : fs::path(KK_TEST_SOURCE_DIR) / "../../shared/fixtures";
}

std::string ReadBytes(const fs::path& iPath) {
  std::string bytes;
  const gzFile file = gzopen(iPath.c_str(), "rb");  // reads what isn't packed as it is
  if (file == nullptr) return bytes;
  char buffer[65536];
  for (int count = 0; (count = gzread(file, buffer, sizeof buffer)) > 0;) {
    bytes.append(buffer, static_cast<size_t>(count));
  }
  gzclose(file);
  return bytes;
}

struct TRow {
  std::string File, Name, Price, Currency, Other, Reading;
};

std::vector<TRow> Manifest() {
  std::vector<TRow> rows;
  std::ifstream file(PagesFolder() / "MANIFEST.tsv");
  std::string line;
  std::getline(file, line);
  while (std::getline(file, line)) {
    std::vector<std::string> cells;
    std::istringstream stream(line);
    for (std::string cell; std::getline(stream, cell, '\t');) cells.push_back(cell);
    cells.resize(11);
    while (!cells[10].empty() && isspace(static_cast<unsigned char>(cells[10].back()))) {
      cells[10].pop_back();
    }
    rows.push_back({cells[0], cells[6], cells[7], cells[8], cells[9], cells[10]});
  }
  return rows;
}

std::string AddressOf(const TRow& iRow) {
  const size_t at = iRow.Other.find("url=");
  if (at == std::string::npos) return "https://example.com/" + iRow.File;
  return iRow.Other.substr(at + 4, iRow.Other.find(';', at) - at - 4);
}

TPageReading ReadRow(const TRow& iRow) {
  const std::string bytes = ReadBytes(PagesFolder() / iRow.File);
  const TPageAddress address = TPageAddress::Parse(AddressOf(iRow)).value();
  return ReadPage({bytes, "text/html", address, address});
}

class RealPages : public testing::Test {
 protected:
  void SetUp() override {
    if (!fs::exists(PagesFolder() / "MANIFEST.tsv")) {
      GTEST_SKIP() << "no real pages in " << PagesFolder() << " (KK_REAL_PAGES names another)";
    }
  }
};

// "119.01 EUR", "229990 CLP (lower of two Offers)", "150 USD; ends ...".
void ExpectOffer(const TRow& iRow, const TPageReading& iReading) {
  ASSERT_TRUE(iReading.Product) << ToUtf8(iReading.Reason);
  std::istringstream words(iRow.Reading);
  std::string amount, currency;
  words >> amount >> currency;
  while (!currency.empty() && !isalpha(currency.back())) currency.pop_back();
  const TOffer& offer = iReading.Product->Offer;
  ASSERT_TRUE(offer.Price);
  EXPECT_EQ(offer.Price->ToNumber(), TPrice::FromNumber(amount).value().ToNumber());
  EXPECT_EQ(ToUtf8(offer.Currency), currency);
  EXPECT_FALSE(IsGone(offer.Availability));
  EXPECT_FALSE(iReading.Product->Name.empty());
}

TEST_F(RealPages, SayWhatTheManifestReadsInThem) {
  int pages = 0;
  for (const TRow& row : Manifest()) {
    if (row.File.rfind("pages/", 0) != 0) continue;
    ++pages;
    SCOPED_TRACE(row.File);
    const TPageReading reading = ReadRow(row);
    if (row.Reading == "no product data") {
      EXPECT_FALSE(reading.Product);
      EXPECT_EQ(ToUtf8(reading.Reason), "Die Seite enthält keine Produktdaten");
    } else if (row.Reading.rfind("price unknown", 0) == 0) {
      ASSERT_TRUE(reading.Product);
      EXPECT_FALSE(reading.Product->Offer.Price);
      EXPECT_EQ(reading.Product->Offer.Currency, u"ILS");
      EXPECT_EQ(reading.Product->Offer.Availability, TAvailability::avOutOfStock);
    } else {
      ExpectOffer(row, reading);
    }
    const bool ends = row.Reading.find("ends 2020-12-06T20:00:00Z") != std::string::npos;
    const TDateTime end = reading.Product ? reading.Product->Offer.EndTime : TDateTime();
    EXPECT_EQ(end, ends ? UtcMsToLocal(1607284800000) : TDateTime());
  }
  EXPECT_GE(pages, 16);
}

TEST_F(RealPages, SmallDocumentsWithFaultsComeOutAsExpected) {
  int documents = 0;
  for (const TRow& row : Manifest()) {
    if (row.File.rfind("structured/", 0) != 0) continue;
    ++documents;
    SCOPED_TRACE(row.File);
    const TPageReading reading = ReadRow(row);
    const bool isProduct =
        isdigit(static_cast<unsigned char>(row.Price[0])) || row.Price.rfind("low ", 0) == 0;
    ASSERT_EQ(reading.Product.has_value(), isProduct) << ToUtf8(reading.Reason);
    if (!isProduct) continue;
    const std::string price = row.Price.rfind("low ", 0) == 0 ? "5.29" : row.Price;
    EXPECT_EQ(reading.Product->Offer.Price, TPrice::FromNumber(price));
    EXPECT_EQ(ToUtf8(reading.Product->Offer.Currency), row.Currency);
    const std::string name = row.Name == "see .json" ? "Better Off Dead" : row.Name;
    EXPECT_EQ(ToUtf8(reading.Product->Name).substr(0, name.size()), name);
  }
  EXPECT_GE(documents, 19);
}

}  // namespace
}  // namespace kk
