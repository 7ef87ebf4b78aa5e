#include "Platform/Linux/AuthorityFile.h"
#include "Support/TestCertificates.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

namespace trellisport::platform {
namespace {

using test::TestCertificates;

/// A file with this text, for as long as the object lives.
class TextFile {
public:
    explicit TextFile(const std::string &text)
        : m_path(std::filesystem::temp_directory_path() /
                 ("trellisport-text-" + std::to_string(getpid())))
    {
        std::ofstream(m_path) << text;
    }
    TextFile(const TextFile &) = delete;
    TextFile &operator=(const TextFile &) = delete;
    ~TextFile() { std::filesystem::remove(m_path); }

    [[nodiscard]] std::string path() const { return m_path.string(); }

private:
    std::filesystem::path m_path;
};

std::string textOf(const std::string &path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(AuthorityFile, OneOrMoreCertificatesAreTaken)
{
    const std::string one = TestCertificates::instance().authorityFile();
    EXPECT_EQ(authorityFileProblem(one), std::nullopt);
    const TestCertificates other("Another authority");
    const TextFile both(textOf(one) + textOf(other.authorityFile()));
    EXPECT_EQ(authorityFileProblem(both.path()), std::nullopt);
}

TEST(AuthorityFile, AFileThatIsNotThereIsSaidSo)
{
    EXPECT_EQ(authorityFileProblem("/nowhere/at all.pem"),
              "The file of certificate authorities \"/nowhere/at all.pem\" does not exist.");
}

TEST(AuthorityFile, AFolderOrADeviceIsNoFile)
{
    EXPECT_EQ(authorityFileProblem("/"),
              "The file of certificate authorities \"/\" is not a file.");
    EXPECT_EQ(authorityFileProblem("/dev/null"),
              "The file of certificate authorities \"/dev/null\" is not a file.");
}

TEST(AuthorityFile, WhatHoldsNoWholeCertificateIsSaidSo)
{
    const std::string whole = textOf(TestCertificates::instance().authorityFile());
    for (const std::string &text :
         {std::string(), std::string("no certificate\n"), whole.substr(0, whole.size() / 2),
          std::string("\x30\x82", 2)}) {
        const TextFile file(text);
        EXPECT_EQ(authorityFileProblem(file.path()), "The file of certificate authorities \"" +
                                                         file.path() +
                                                         "\" holds no certificates in PEM form.");
    }
}

TEST(AuthorityFile, AFileOfSomebodyElseIsSaidSo)
{
    if (geteuid() == 0) {
        GTEST_SKIP() << "nothing is closed to this user";
    }
    const TextFile file(textOf(TestCertificates::instance().authorityFile()));
    std::filesystem::permissions(file.path(), std::filesystem::perms::none);
    EXPECT_EQ(authorityFileProblem(file.path()),
              "The file of certificate authorities \"" + file.path() + "\" must not be read.");
}

} // namespace
} // namespace trellisport::platform
