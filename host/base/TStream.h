#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/base/TObject.h"

namespace kk {

/// A sequence of bytes with a position. One thread at a time.
class TStream : public TObject {
 public:
  /// Reads up to so many bytes from the position on and answers how many there were.
  virtual size_t Read(void* oBytes, size_t iCount) = 0;
  /// Writes at the position, over what is there and beyond the end. Raises EInOutError if it can't.
  virtual void Write(const void* iBytes, size_t iCount) = 0;
  virtual size_t GetPosition() const = 0;
  /// A position behind the end is moved to the end.
  virtual void SetPosition(size_t iPosition) = 0;
  virtual size_t GetSize() const = 0;

  void Write(std::string_view iBytes) { Write(iBytes.data(), iBytes.size()); }
  /// All bytes from the position to the end.
  std::string ReadRest();
};

/// A stream in memory.
class TMemoryStream : public TStream {
 public:
  TMemoryStream() = default;
  explicit TMemoryStream(std::string iBytes) : FBytes(std::move(iBytes)) {}

  using TStream::Write;
  size_t Read(void* oBytes, size_t iCount) override;
  void Write(const void* iBytes, size_t iCount) override;
  size_t GetPosition() const override { return FPosition; }
  void SetPosition(size_t iPosition) override;
  size_t GetSize() const override { return FBytes.size(); }

  void Clear();
  /// All bytes, whatever the position.
  const std::string& Bytes() const { return FBytes; }
  /// Takes all bytes over; the position is the start.
  void SetBytes(std::string iBytes);

 private:
  std::string FBytes;
  size_t FPosition = 0;
};

}  // namespace kk
