#include "Platform/Linux/AuthorityFile.h"

#include <openssl/err.h>
#include <openssl/x509_vfy.h>

#include <filesystem>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace trellisport::platform {

namespace {

struct StoreDeleter {
    void operator()(X509_STORE *store) const { X509_STORE_free(store); }
};

std::string sentence(const std::string &file, const std::string &problem)
{
    return "The file of certificate authorities \"" + file + "\" " + problem + '.';
}

} // namespace

std::optional<std::string> authorityFileProblem(const std::string &file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) {
        return sentence(file, error.value() == EACCES ? "must not be read" : "does not exist");
    }
    // It is read again when the session starts, which nothing but a file allows.
    if (!std::filesystem::is_regular_file(status)) {
        return sentence(file, "is not a file");
    }
    if (access(file.c_str(), R_OK) != 0) {
        return sentence(file, "must not be read");
    }
    const std::unique_ptr<X509_STORE, StoreDeleter> store(X509_STORE_new());
    const bool isRead = store && X509_STORE_load_file(store.get(), file.c_str()) == 1;
    ERR_clear_error();
    if (!isRead) {
        return sentence(file, "holds no certificates in PEM form");
    }
    return {};
}

} // namespace trellisport::platform
