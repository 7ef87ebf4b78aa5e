#include "PracticeService/App/AppFolder.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include <string>

namespace trellisport::practice {
namespace {

class AppFolderTest : public testing::Test {
protected:
    void write(const std::string &name, const std::string &content) const
    {
        QFile file(m_folder.filePath(QString::fromStdString(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(QByteArray::fromStdString(content));
    }

    QTemporaryDir m_folder;
    std::string m_path = m_folder.path().toStdString();
};

TEST_F(AppFolderTest, WhatHasNotChangedIsReadOnce)
{
    write("index.html", "page");
    AppFolder folder(m_path);
    const auto first = folder.find("index.html");
    const auto second = folder.find("index.html");
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->plain.bytes, second->plain.bytes) << "another copy";
    write("index.html", "other");
    const auto third = folder.find("index.html");
    ASSERT_TRUE(third);
    EXPECT_EQ(*third->plain.bytes, "other");
    EXPECT_EQ(*first->plain.bytes, "page") << "a reply that is under way has changed";
}

TEST_F(AppFolderTest, ALinkToTheFolderMayMoveOn)
{
    namespace fs = std::filesystem;
    const QTemporaryDir links;
    const fs::path link = fs::path(links.path().toStdString()) / "current";
    write("index.html", "one");
    fs::create_directory_symlink(m_path, link);
    AppFolder folder(link);
    ASSERT_EQ(*folder.find("index.html")->plain.bytes, "one");
    const QTemporaryDir next;
    fs::copy_file(m_path + "/index.html", next.path().toStdString() + "/index.html");
    fs::resize_file(next.path().toStdString() + "/index.html", 2);
    fs::remove(link);
    fs::create_directory_symlink(next.path().toStdString(), link);
    EXPECT_EQ(*folder.find("index.html")->plain.bytes, "on");
}

// As in the moment in which a new version takes the folder's place.
TEST_F(AppFolderTest, WithoutTheFolderItsFilesStay)
{
    namespace fs = std::filesystem;
    write("index.html", "page");
    write("other", "text");
    AppFolder folder(m_path);
    fs::rename(m_path, m_path + ".away");
    ASSERT_TRUE(folder.find("index.html"));
    EXPECT_EQ(*folder.find("other")->plain.bytes, "text");
    fs::rename(m_path + ".away", m_path);
    fs::remove(m_path + "/other");
    EXPECT_TRUE(folder.find("index.html"));
    EXPECT_FALSE(folder.find("other")) << "what has gone from the folder";
}

TEST_F(AppFolderTest, TooManyFilesAreRefused)
{
    write("index.html", "page");
    for (std::size_t number = 1; number < AppFolder::mostFiles; ++number)
        write(std::to_string(number), "");
    const AppFolder folder(m_path);
    write("one more", "");
    EXPECT_THROW(const AppFolder more(m_path), AppFolderError);
}

TEST_F(AppFolderTest, TooManyBytesAreRefused)
{
    write("index.html", "page");
    write("large", "");
    std::filesystem::resize_file(m_path + "/large", AppFolder::mostBytes + 1);
    EXPECT_THROW(const AppFolder folder(m_path), AppFolderError);
}

} // namespace
} // namespace trellisport::practice
