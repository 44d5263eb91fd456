#pragma once

#include <QColor>
#include <QImage>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace kk {

/// What another program reads in a PDF file (poppler's tools).
class TPdfReader {
 public:
  explicit TPdfReader(std::string iPath) : FPath(std::move(iPath)) {}

  int PageCount() const { return std::stoi(Info("Pages")); }
  /// A line of the document's properties: "Title", "Page size".
  std::string Info(const std::string& iName) const {
    const std::string text = Output("pdfinfo '" + FPath + "'");
    const size_t line = text.find(iName + ":");
    if (line == std::string::npos) return "";
    const size_t from = text.find_first_not_of(' ', line + iName.size() + 1);
    return text.substr(from, text.find('\n', from) - from);
  }
  /// The text of a page, or of all (0), set as on paper.
  std::string Text(int iPage = 0) const {
    const std::string page = std::to_string(iPage);
    const std::string range = iPage == 0 ? "" : "-f " + page + " -l " + page + " ";
    return Output("pdftotext -layout -enc UTF-8 " + range + "'" + FPath + "' -");
  }

  /// A page, a pixel for each point.
  QImage Picture(int iPage) const {
    const std::string page = std::to_string(iPage);
    const std::string png =
        Output("pdftoppm -png -r 72 -f " + page + " -l " + page + " '" + FPath + "'");
    return QImage::fromData(QByteArray::fromStdString(png), "PNG");
  }
  /// Where there is something on a page.
  QRect Painted(int iPage) const { return PaintedOf(Picture(iPage)); }
  static QRect PaintedOf(const QImage& iPage) {
    QRect painted;
    for (int y = 0; y < iPage.height(); ++y) {
      for (int x = 0; x < iPage.width(); ++x) {
        if (iPage.pixelColor(x, y) != QColor(Qt::white)) painted |= QRect(x, y, 1, 1);
      }
    }
    return painted;
  }

 private:
  static std::string Output(const std::string& iCommand) {
    std::FILE* pipe = popen(iCommand.c_str(), "r");
    std::string text;
    std::array<char, 4096> bytes{};
    while (const size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe)) {
      text.append(bytes.data(), count);
    }
    if (pclose(pipe) != 0) throw std::runtime_error("failed: " + iCommand);
    return text;
  }

  std::string FPath;
};

}  // namespace kk
