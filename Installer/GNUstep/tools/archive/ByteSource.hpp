#pragma once
#include "GNUstep/files/Descriptor.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

struct archive;

namespace vant::tools {

/// A stream of bytes that an archive is read from: a file, or a file inside another archive.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource &) = delete;
    ByteSource &operator=(const ByteSource &) = delete;
    virtual ~ByteSource() = default;

    /// The next bytes, valid until the next call; empty at the end. Throws ExpansionError.
    std::span<const char> next();
    /// The first bytes of the stream (six at most) without taking them; to be called before `next`.
    std::string magic();
    /// Reads on to the end, where checksums and a missing tail are noticed.
    void drain();
    /// Bytes handed out so far.
    [[nodiscard]] std::uint64_t taken() const { return taken_; }

protected:
    /// Fills the buffer with at least one byte, or returns 0 at the end. Throws ExpansionError.
    virtual std::size_t fill(std::span<char> buffer) = 0;

private:
    std::vector<char> buffer_ = std::vector<char>(std::size_t{32} * 1024);
    std::size_t ahead_ = 0;
    std::uint64_t taken_ = 0;
};

/// A regular file, from its start.
class FileSource : public ByteSource {
public:
    explicit FileSource(const std::string &path);
    [[nodiscard]] std::uint64_t size() const { return size_; }

protected:
    std::size_t fill(std::span<char> buffer) override;

private:
    std::string path_;
    Descriptor file_;
    std::uint64_t size_ = 0;
};

/// The data of the entry at which an archive stands.
class EntrySource : public ByteSource {
public:
    explicit EntrySource(archive *outer) : outer_(outer) {}

protected:
    std::size_t fill(std::span<char> buffer) override;

private:
    archive *outer_;
};

/// Opens a regular file for reading and gives its size. Anything else (a folder, a pipe) is an ExpansionError: a pipe
/// could keep the reader waiting for ever.
[[nodiscard]] Descriptor openRegularFile(const std::string &path, std::uint64_t &size);

} // namespace vant::tools
