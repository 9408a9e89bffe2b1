// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <sys/types.h>

namespace imageconvert {

// Where the encoders put their bytes.
class ByteSink
{
public:
    virtual ~ByteSink() = default;
    virtual bool write(const void* data, size_t size) = 0; // false after an error
    virtual void throwIfFailed() const = 0;                // throws PictureError
};

// Encoded bytes in memory.
class ByteString : public ByteSink
{
public:
    bool write(const void* data, size_t size) override
    {
        bytes.append(static_cast<const char*>(data), size);
        return true;
    }
    void throwIfFailed() const override {}

    std::string bytes;
};

// A file that appears whole or not at all: written under a temporary name in the same folder, renamed by
// commit(). Not committed, the temporary file is removed and an older file of that name stays.
// No fsync: a power cut may lose the file, a full disk or a crash of the program may not harm it.
class OutputFile : public ByteSink
{
public:
    explicit OutputFile(const std::string& path); // throws PictureError
    ~OutputFile() override;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    // False after an error; the first one is kept for throwIfFailed(). A file-size limit is an error here,
    // not the signal SIGXFSZ.
    bool write(const void* data, size_t size) override;
    off_t seek(off_t offset, int whence);
    ssize_t read(void* data, size_t size);
    void commit();                       // throws PictureError
    void throwIfFailed() const override; // throws PictureError that tells the full disk from other causes

private:
    std::string m_path;
    std::string m_temporary;
    int m_fd = -1;
    int m_errno = 0;
};

} // namespace imageconvert
