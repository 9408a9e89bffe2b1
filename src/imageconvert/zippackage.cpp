// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageconvert/zippackage.h"

#include "imageconvert/outputfile.h"
#include "imageconvert/pictureerror.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <exception>
#include <list>
#include <zip.h>

namespace imageconvert {

namespace {

// The content of one entry, made when libzip asks for its size and dropped when it has been read.
struct LazyContent
{
    std::function<std::string()> make;
    std::exception_ptr* failure;
    std::string bytes;
    size_t at = 0;
    bool ready = false;
    zip_error_t error = {};

    bool prepare()
    {
        if (ready)
            return true;
        try {
            bytes = make();
            ready = true;
        } catch (...) {
            *failure = std::current_exception();
            zip_error_set(&error, ZIP_ER_READ, EIO);
        }
        return ready;
    }

    zip_int64_t stat(void* data)
    {
        if (!prepare())
            return -1;
        auto* info = static_cast<zip_stat_t*>(data);
        zip_stat_init(info);
        info->size = bytes.size();
        info->mtime = std::time(nullptr);
        info->valid = ZIP_STAT_SIZE | ZIP_STAT_MTIME;
        return sizeof *info;
    }

    zip_int64_t read(void* data, zip_uint64_t length)
    {
        const size_t count = std::min<size_t>(length, bytes.size() - at);
        std::memcpy(data, bytes.data() + at, count);
        at += count;
        return static_cast<zip_int64_t>(count);
    }

    void drop()
    {
        bytes = std::string();
        ready = false;
    }
};

zip_int64_t onContent(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto* content = static_cast<LazyContent*>(state);
    switch (command) {
    case ZIP_SOURCE_OPEN:
        content->at = 0;
        return content->prepare() ? 0 : -1;
    case ZIP_SOURCE_READ:
        return content->read(data, length);
    case ZIP_SOURCE_CLOSE:
        content->drop();
        return 0;
    case ZIP_SOURCE_STAT:
        return content->stat(data);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&content->error, data, length);
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_READABLE;
    default:
        zip_error_set(&content->error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

// The zip file as libzip writes it: a file that does not exist yet.
struct Target
{
    OutputFile file;
    zip_error_t error = {};

    explicit Target(const std::string& path) : file(path) {}

    zip_int64_t fail(int code, int systemCode)
    {
        zip_error_set(&error, code, systemCode);
        return -1;
    }

    zip_int64_t seek(void* data, zip_uint64_t length)
    {
        const off_t here = file.seek(0, SEEK_CUR), end = file.seek(0, SEEK_END);
        const zip_int64_t to = zip_source_seek_compute_offset(
            static_cast<zip_uint64_t>(here), static_cast<zip_uint64_t>(end), data, length, &error);
        return to >= 0 && file.seek(static_cast<off_t>(to), SEEK_SET) == static_cast<off_t>(to) ? 0 : -1;
    }
};

zip_int64_t onTarget(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command)
{
    auto* target = static_cast<Target*>(state);
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_WRITABLE;
    case ZIP_SOURCE_STAT:
        return target->fail(ZIP_ER_READ, ENOENT);
    case ZIP_SOURCE_WRITE:
        return target->file.write(data, length) ? static_cast<zip_int64_t>(length)
                                                : target->fail(ZIP_ER_WRITE, EIO);
    case ZIP_SOURCE_SEEK_WRITE:
        return target->seek(data, length);
    case ZIP_SOURCE_TELL_WRITE:
        return target->file.seek(0, SEEK_CUR);
    case ZIP_SOURCE_BEGIN_WRITE:
    case ZIP_SOURCE_COMMIT_WRITE: // the file is put in place after libzip has finished
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_REMOVE:
    case ZIP_SOURCE_FREE:
        return 0;
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&target->error, data, length);
    default:
        return target->fail(ZIP_ER_OPNOTSUPP, 0);
    }
}

struct Discard
{
    void operator()(zip_t* zip) const { zip_discard(zip); }
};

} // namespace

struct ZipPackage::Private
{
    std::string path;
    Target target;
    std::list<LazyContent> contents;
    std::exception_ptr failure;
    std::function<bool(double)> progress;
    bool cancelled = false;
    std::unique_ptr<zip_t, Discard> zip; // destroyed first: it refers to all above

    explicit Private(const std::string& p) : path(p), target(p) {}

    [[noreturn]] void fail(const std::string& why) const
    {
        throw PictureError("cannot write " + path + ": " + why);
    }

    void add(const std::string& name, zip_source_t* source, Method method)
    {
        const zip_int64_t index =
            source ? zip_file_add(zip.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
        if (index < 0) {
            zip_source_free(source);
            fail(name + ": " + zip_strerror(zip.get()));
        }
        const zip_int32_t kind = method == Method::Store ? ZIP_CM_STORE : ZIP_CM_DEFLATE;
        if (zip_set_file_compression(zip.get(), static_cast<zip_uint64_t>(index), kind, 0) != 0)
            fail(name + ": " + zip_strerror(zip.get()));
    }

    void report(double share)
    {
        if (!progress || cancelled || failure)
            return;
        try {
            cancelled = !progress(share);
        } catch (...) {
            failure = std::current_exception();
        }
    }
};

ZipPackage::ZipPackage(const std::string& path) : d(std::make_unique<Private>(path))
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_function_create(onTarget, &d->target, &error);
    if (source)
        d->zip.reset(zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, &error));
    if (d->zip)
        return;
    zip_source_free(source);
    const std::string why = zip_error_strerror(&error);
    zip_error_fini(&error);
    d->fail(why);
}

ZipPackage::~ZipPackage() = default;

void ZipPackage::addFolder(const std::string& name)
{
    if (zip_dir_add(d->zip.get(), name.c_str(), ZIP_FL_ENC_UTF_8) < 0)
        d->fail(name + ": " + zip_strerror(d->zip.get()));
}

void ZipPackage::addText(const std::string& name, std::string content)
{
    addLazily(
        name, [text = std::move(content)] { return text; }, Method::Deflate);
}

void ZipPackage::addFile(const std::string& name, const std::string& path, Method method)
{
    d->add(name, zip_source_file(d->zip.get(), path.c_str(), 0, -1), method);
}

void ZipPackage::addLazily(const std::string& name, std::function<std::string()> content, Method method)
{
    d->contents.emplace_back();
    d->contents.back().make = std::move(content);
    d->contents.back().failure = &d->failure;
    d->add(name, zip_source_function(d->zip.get(), onContent, &d->contents.back()), method);
}

void ZipPackage::write(const std::function<bool(double)>& progress)
{
    d->progress = progress;
    zip_t* zip = d->zip.get();
    const zip_int64_t entries = zip_get_num_entries(zip, 0);
    zip_register_progress_callback_with_state(
        zip, 0.5 / static_cast<double>(std::max<zip_int64_t>(1, entries)),
        [](zip_t*, double share, void* state) { static_cast<Private*>(state)->report(share); }, nullptr,
        d.get());
    zip_register_cancel_callback_with_state(
        zip,
        [](zip_t*, void* state) {
            const auto* p = static_cast<Private*>(state);
            return p->cancelled || p->failure ? 1 : 0;
        },
        nullptr, d.get());
    if (zip_close(zip) == 0) {
        static_cast<void>(d->zip.release()); // freed by zip_close
        d->target.file.commit();
        return;
    }
    if (d->failure)
        std::rethrow_exception(d->failure);
    if (d->cancelled)
        throw PictureError("cancelled");
    d->target.file.throwIfFailed();
    d->fail(zip_strerror(zip));
}

} // namespace imageconvert
