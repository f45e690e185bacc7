#include "qmcore/platform/ZipArchive.hpp"

#include <zip.h>

#include <algorithm>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "qmcore/platform/Error.hpp"

namespace qm {

namespace fs = std::filesystem;

namespace {

// The one conversion of libzip's errors into ours.
[[noreturn]] void throwZipError(const std::string& context, zip_error_t* error) {
  const int code = zip_error_code_zip(error);
  std::string description = context + ": " + zip_error_strerror(error);
  zip_error_fini(error);
  throw ErrorException(Error(kZipErrorDomain, code, std::move(description)));
}

[[noreturn]] void throwZipCode(const std::string& context, int code) {
  zip_error_t error;
  zip_error_init_with_code(&error, code);
  throwZipError(context, &error);
}

[[noreturn]] void throwArchiveError(const std::string& context, zip_t* archive) {
  zip_error_t copy;
  zip_error_init(&copy);
  const zip_error_t* error = zip_get_error(archive);
  zip_error_set(&copy, zip_error_code_zip(error), zip_error_code_system(error));
  throwZipError(context, &copy);
}

// Discards the archive unless it was closed: a failed write leaves nothing behind.
struct ArchiveDiscarder {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using ArchivePtr = std::unique_ptr<zip_t, ArchiveDiscarder>;

void addFile(zip_t* archive, const fs::path& file, const std::string& name) {
  zip_source_t* source = zip_source_file(archive, file.c_str(), 0, -1);
  if (source == nullptr) throwArchiveError("cannot read " + file.string(), archive);
  const zip_int64_t index = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
  if (index < 0) {
    zip_source_free(source);
    throwArchiveError("cannot add " + name, archive);
  }
  if (zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 6) != 0) {
    throwArchiveError("cannot compress " + name, archive);
  }
}

void addTree(zip_t* archive, const fs::path& item, const std::string& name) {
  std::error_code error;
  if (!fs::is_directory(item, error)) {
    addFile(archive, item, name);
    return;
  }
  if (zip_dir_add(archive, name.c_str(), ZIP_FL_ENC_UTF_8) < 0) {
    throwArchiveError("cannot add " + name + "/", archive);
  }
  std::vector<fs::path> children;
  for (fs::directory_iterator it(item, error), end; !error && it != end; it.increment(error)) {
    children.push_back(it->path());
  }
  if (error) {
    throw ErrorException(Error(kZipErrorDomain, ZIP_ER_READ,
                               "cannot list " + item.string() + ": " + error.message()));
  }
  std::sort(children.begin(), children.end());
  for (const fs::path& child : children) {
    addTree(archive, child, name + "/" + child.filename().string());
  }
}

}  // namespace

void writeZipArchive(const fs::path& item, const fs::path& archive) {
  std::error_code error;
  if (!fs::exists(item, error)) {
    throwZipCode("cannot read " + item.string(), ZIP_ER_NOENT);
  }
  int code = 0;
  ArchivePtr zip(zip_open(archive.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code));
  if (zip == nullptr) throwZipCode("cannot open " + archive.string(), code);
  fs::path named = item;
  if (!named.has_filename()) named = named.parent_path();  // "dir/" names its folder "dir"
  addTree(zip.get(), item, named.filename().string());
  if (zip_close(zip.get()) != 0) throwArchiveError("cannot write " + archive.string(), zip.get());
  static_cast<void>(zip.release());  // closed: nothing left to discard
}

}  // namespace qm
