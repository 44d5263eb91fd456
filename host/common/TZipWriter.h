#pragma once

#include <list>
#include <memory>
#include <string>

#include "host/common/TFileCompression.h"

struct zip;
struct zip_source;

namespace kk {

/// Builds an archive in memory. What goes wrong raises EInOutError.
class TZipWriter {
 public:
  TZipWriter();
  ~TZipWriter();

  /// Adds bytes to be packed at a level of TFileCompression. They are borrowed until Finish.
  void Add(const std::string& iName, const std::string& iBytes, int iLevel);
  /// Adds an entry as it is. It is borrowed until Finish.
  void AddPacked(const std::string& iName, const TPackedEntry& iPacked);
  /// Packs, and answers the archive's bytes.
  std::string Finish();

 private:
  struct TDiscard {
    void operator()(zip* iArchive) const;
  };
  struct TFree {
    void operator()(zip_source* iSource) const;
  };
  [[noreturn]] void Fail() const;
  uint64_t AddSource(const std::string& iName, zip_source* iSource);

  std::unique_ptr<zip_source, TFree> FBytes;
  std::unique_ptr<zip, TDiscard> FArchive;
  std::list<TPackedEntry> FRepacked;
};

}  // namespace kk
