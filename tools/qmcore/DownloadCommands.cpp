// qmcore get, post, download, sign and md5: requests to a download server, checked downloads,
// signed download URLs and the digest texts they use.

#include <memory>
#include <optional>
#include <string>

#include "qmcore/files/FileUrlDownloader.hpp"
#include "qmcore/files/MD5.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

// A failed request: "download error 205: <description>" (or its JSON), exit status 1.
void printFailure(const Error& error, ToolContext& context) {
  Record(Record::Layout::kOneLine)
      .jsonField("domain", Json(error.domain()))
      .jsonField("code", static_cast<double>(error.code()))
      .field("error", error.errorRundownText().value_or(""),
             error.domain() + " error " + std::to_string(error.code()) + ": " +
                 error.errorRundownText().value_or(""))
      .print(context);
  context.exitStatus = 1;
}

void addGet(CLI::App& app, ToolContext& context) {
  CLI::App* get = app.add_subcommand(
      "get", "GET the text at URL (5 s idle time-out); prints it, or the error with status 1");
  auto url = std::make_shared<std::string>();
  get->add_option("URL", *url, "An http or https URL")->required();
  get->callback([url, &context] {
    std::optional<Error> error;
    const std::optional<std::string> text =
        FileUrlDownloader::stringWithGetFromUrlString(*url, &error);
    if (error.has_value()) return printFailure(*error, context);
    if (!text.has_value()) {
      return printFailure(
          Error(std::string(kDownloadErrorDomain), 0, "the answer is not UTF-8 text"), context);
    }
    Record(Record::Layout::kOneLine)
        .jsonField("url", Json(*url))
        .field("text", *text)
        .print(context);
  });
}

void addPost(CLI::App& app, ToolContext& context) {
  CLI::App* post = app.add_subcommand(
      "post", "POST BODY as a form to URL and print the answer (empty on any failure)");
  auto url = std::make_shared<std::string>();
  auto body = std::make_shared<std::string>();
  post->add_option("URL", *url, "An http or https URL")->required();
  post->add_option("BODY", *body, "The form body, e.g. 'a=1&b=2'")->required();
  post->callback([url, body, &context] {
    Record(Record::Layout::kOneLine)
        .jsonField("url", Json(*url))
        .field("text", FileUrlDownloader::getStringWithPostFromUrlString(*url, *body))
        .print(context);
  });
}

void addDownload(CLI::App& app, ToolContext& context) {
  CLI::App* download = app.add_subcommand(
      "download",
      "Download URL to PATH, checking its MD5 digest when given; prints the path, or the "
      "error's domain, code and description with status 1 (PATH is then left as it was)");
  auto url = std::make_shared<std::string>();
  auto path = std::make_shared<std::string>();
  auto md5 = std::make_shared<std::optional<std::string>>();
  download->add_option("URL", *url, "An http or https URL")->required();
  download->add_option("--to", *path, "Where to write the file")->required();
  download->add_option("--md5", *md5, "The expected digest, 32 lower-case hexadecimal digits");
  download->callback([url, path, md5, &context] {
    std::optional<Error> failure;
    FileUrlDownloader::downloadFileFromUrl(
        *url, *path, md5->has_value() ? std::optional<std::string_view>(**md5) : std::nullopt,
        [&failure](const std::optional<Error>& error) { failure = error; });
    if (failure.has_value()) return printFailure(*failure, context);
    Record(Record::Layout::kOneLine).field("path", *path).print(context);
  });
}

void addSign(CLI::App& app, ToolContext& context) {
  CLI::App* sign = app.add_subcommand(
      "sign", "The signed download URL of FILE under BASE, valid for 300 s or until --expires");
  auto file = std::make_shared<std::string>();
  auto base = std::make_shared<std::string>();
  auto secret = std::make_shared<std::string>();
  auto expires = std::make_shared<std::optional<std::string>>();
  sign->add_option("FILE", *file, "The file name, e.g. maps.zip")->required();
  sign->add_option("BASE", *base, "The base URL, e.g. https://example.org/d")->required();
  sign->add_option("SECRET", *secret, "The secret shared with the server")->required();
  sign->add_option("--expires", *expires, "Expiry in seconds since 1970 (default: now + 300)");
  sign->callback([file, base, secret, expires, &context] {
    const std::string url = expires->has_value()
                                ? FileUrlDownloader::urlForProtectedFileName(
                                      *file, *base, parseNumber(**expires, "--expires"), *secret)
                                : FileUrlDownloader::urlForProtectedFileName(*file, *base, *secret);
    Record(Record::Layout::kOneLine).field("url", url).print(context);
  });
}

struct DigestForms {
  bool hex = false;
  bool base64 = false;
  bool url = false;
};

void addMd5(CLI::App& app, ToolContext& context) {
  CLI::App* md5 = app.add_subcommand(
      "md5",
      "MD5 of TEXT (up to a zero byte) as base64, or --hex, or --url (URL-friendly base64); "
      "--file PATH: the file's digest, hexadecimal unless --base64 or --url is given");
  auto text = std::make_shared<std::optional<std::string>>();
  auto file = std::make_shared<std::optional<std::string>>();
  md5->add_option("TEXT", *text, "The text");
  md5->add_option("--file", *file, "Digest this file's bytes instead of a text");
  auto forms = std::make_shared<DigestForms>();
  CLI::Option* hex = md5->add_flag("--hex", forms->hex, "32 lower-case hexadecimal digits");
  CLI::Option* base64 =
      md5->add_flag("--base64", forms->base64, "Standard base64 (the default for a text)");
  CLI::Option* url = md5->add_flag("--url", forms->url, "URL-friendly base64: '-' and '_', no '='");
  hex->excludes(base64)->excludes(url);
  base64->excludes(url);
  md5->callback([text, file, forms, &context] {
    if (text->has_value() == file->has_value()) throw UsageError("give either TEXT or --file PATH");
    std::string digest;
    if (file->has_value()) {
      const std::string data = readFile(**file);
      if (forms->url) {
        digest = MD5::urlFriendlybase64EncodedStringForString(MD5::md5Base64StringForData(data));
      } else if (forms->base64) {
        digest = MD5::md5Base64StringForData(data);
      } else {
        digest = MD5::hexStringDigestForData(data);
      }
    } else if (forms->hex) {
      const std::string& value = **text;
      digest = MD5::hexStringDigestForData(value.substr(0, value.find('\0')));
    } else if (forms->url) {
      digest = MD5::urlFriendlyMD5StringForString(**text);
    } else {
      digest = MD5::md5StringForString(**text);
    }
    Record(Record::Layout::kOneLine).field("md5", digest).print(context);
  });
}

}  // namespace

void addDownloadCommands(CLI::App& app, ToolContext& context) {
  addGet(app, context);
  addPost(app, context);
  addDownload(app, context);
  addSign(app, context);
  addMd5(app, context);
}

}  // namespace qm::tool
