// Shared buffers against the real shared directory: what its files hold, and what is kept away from it.
#include "mp/shared_buffer.h"

#include <cerrno>
#include <climits>
#include <clocale>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stop_token>
#include <thread>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "mp/exception.h"
#include "support/child_process.h"
#include "support/own_tmp.h"

namespace {

namespace fs = std::filesystem;
using Buffer = mp::SharedBuffer<char>;

fs::path pathOf(const std::string& fileName) { return fs::path(mp::sharedDirectory()) / fileName; }

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string bytesOf(const Buffer& buffer) {
    std::vector<char> bytes{'o', 'l', 'd'};
    buffer.get(bytes);
    return {bytes.begin(), bytes.end()};
}

void put(Buffer& buffer, const std::string& bytes) { buffer.setBuffer(bytes.data(), bytes.size()); }

mode_t modeOf(const fs::path& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// The message of the SharedMemoryException that `action` throws.
std::wstring errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const mp::SharedMemoryException& error) {
        return error.message();
    }
    return L"no exception";
}

std::wstring systemText(int error) { return mp::toWideString(std::strerror(error)); }

const std::wstring badName = L"Shared variable name is not a valid file name";

/// Gives each test a name of its own, whose file is gone before and after, whatever it was.
class SharedBuffer : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(std::setlocale(LC_ALL, "C.UTF-8"));
        Buffer(L"zeq-test", true); // makes the directory
    }
    void TearDown() override {
        fs::remove_all(path);
        std::setlocale(LC_ALL, "C");
    }

    const std::string fileName = "zeq-test-" + std::to_string(getpid());
    const mp::String name{fileName.begin(), fileName.end()};
    const fs::path path = pathOf(fileName);
};

TEST_F(SharedBuffer, DirectoryIsTheSameInEveryProcess) {
    EXPECT_EQ(mp::sharedDirectory(), "/tmp/mp-v25-42bbe1c8-8188-3499-bbc2-5458a65fd115");
}

TEST_F(SharedBuffer, ObjectIsExactlyItsBytes) {
    Buffer buffer(name, true);
    EXPECT_EQ(bytesOf(buffer), "");
    for (const std::string& bytes :
         {std::string("first\0\n", 7), std::string(3'000'000, 'x'), std::string("b"), std::string()}) {
        put(buffer, bytes);
        EXPECT_TRUE(contentOf(path) == bytes);
        EXPECT_TRUE(bytesOf(buffer) == bytes);
    }
}

TEST_F(SharedBuffer, SettingTheSizeKeepsTheCommonBytes) {
    Buffer buffer(name, true);
    put(buffer, "abcdef");
    buffer.setSize(4);
    EXPECT_EQ(bytesOf(buffer), "abcd");
    buffer.setSize(6);
    EXPECT_EQ(bytesOf(buffer), std::string("abcd\0\0", 6));
    buffer.setSize(0);
    EXPECT_EQ(bytesOf(buffer), "");
    EXPECT_TRUE(fs::exists(path));
}

TEST_F(SharedBuffer, BuffersOfOneNameShareOneObject) {
    Buffer writer(name, true);
    put(writer, "one");
    Buffer second(name, false);
    put(second, "second");
    EXPECT_EQ(bytesOf(writer), "second");
}

TEST_F(SharedBuffer, NameIsKeptInUtf8) {
    const Buffer buffer(name + L" Größe €", true);
    EXPECT_TRUE(fs::exists(pathOf(fileName + " Größe €")));
}

TEST_F(SharedBuffer, ObjectStaysUnlessItsBufferWasToldToRemoveIt) {
    { Buffer(name, false); }
    EXPECT_TRUE(fs::exists(path));
    { Buffer(name, true); }
    EXPECT_FALSE(fs::exists(path));
    {
        const Buffer buffer(name, true);
        mp::removeObject(name);
        EXPECT_FALSE(fs::exists(path));
    }
    mp::removeObject(name);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(SharedBuffer, AnotherInitLetsGoOfTheFirstObject) {
    Buffer buffer(name + L"-2", false);
    buffer.init(name, true);
    put(buffer, "here");
    EXPECT_EQ(contentOf(path), "here");
    EXPECT_EQ(errorOf([&] { buffer.init(L"", false); }), L"Shared variable name mustn't be empty");
    EXPECT_EQ(bytesOf(buffer), "here") << "a failed init must change nothing";
    EXPECT_TRUE(fs::remove(pathOf(fileName + "-2"))) << "only the last object is removed with its buffer";
}

TEST_F(SharedBuffer, NeedsInitFirst) {
    const std::wstring message = L"Shared buffer was not initialized";
    Buffer buffer;
    std::vector<char> bytes;
    EXPECT_EQ(errorOf([&] { buffer.setSize(1); }), message);
    EXPECT_EQ(errorOf([&] { put(buffer, "x"); }), message);
    EXPECT_EQ(errorOf([&] { buffer.get(bytes); }), message);
    EXPECT_NE(errorOf([&] { buffer.init(name + std::wstring(300, L'x'), true); }), L"no exception");
    EXPECT_EQ(errorOf([&] { buffer.setSize(1); }), message) << "a failed init opens nothing";
}

TEST_F(SharedBuffer, ImpossibleSizesAreErrors) {
    Buffer buffer(name, true);
    EXPECT_EQ(errorOf([&] { buffer.setSize(LONG_MAX + 1ul); }), systemText(EINVAL));
    EXPECT_NE(errorOf([&] { buffer.setSize(1ul << 62); }), L"no exception");
    EXPECT_EQ(bytesOf(buffer), "");
}

TEST_F(SharedBuffer, NamesThatLeadElsewhereAreRefused) {
    const fs::path outside = fs::path("/tmp") / fileName;
    std::ofstream(outside) << "precious";
    std::ofstream(path) << "precious";
    const struct {
        mp::String name;
        std::wstring error;
    } cases[] = {
        {L"", L"Shared variable name mustn't be empty"},
        {L".", badName},
        {L"..", badName},
        {L"../" + name, badName},
        {L"/tmp/" + name, badName},
        {L"./" + name, badName},
        {name + L"/", badName},
        {L"a/b", badName},
        {name + mp::String(L"\0x", 2), badName},
        {mp::String(L"\0", 1), badName},
        {L"\xD800", badName},
    };
    for (const auto& bad : cases) {
        EXPECT_EQ(errorOf([&] { Buffer(bad.name, true); }), bad.error) << mp::toUtf8String(bad.name);
        mp::removeObject(bad.name);
    }
    EXPECT_EQ(contentOf(outside), "precious");
    EXPECT_EQ(contentOf(path), "precious");
    fs::remove(outside);
}

TEST_F(SharedBuffer, OnlyRegularFilesAreOpened) {
    const fs::path target = fs::path("/tmp") / fileName;
    const auto expectRefused = [&](const std::wstring& error) {
        EXPECT_EQ(errorOf([&] { Buffer(name, true); }), error);
        fs::remove(path);
    };
    fs::create_symlink(target, path);
    expectRefused(systemText(ELOOP));
    EXPECT_FALSE(fs::exists(target)) << "created through a dangling link";

    std::ofstream(target) << "precious";
    fs::create_symlink(target, path);
    mp::removeObject(name);
    EXPECT_FALSE(fs::is_symlink(path));
    EXPECT_EQ(contentOf(target), "precious") << "removing a link must leave its target";
    fs::remove(target);

    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    expectRefused(L"Shared variable is not a regular file");

    fs::create_directory(path);
    mp::removeObject(name);
    expectRefused(systemText(EISDIR));
}

TEST_F(SharedBuffer, FailuresLeaveNoDescriptorOpen) {
    const auto descriptors = [] {
        return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
    };
    const auto before = descriptors();
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    for (int i = 0; i < 3; ++i) errorOf([&] { Buffer(name, true); });
    fs::remove(path);
    for (int i = 0; i < 3; ++i) Buffer(name, true).init(name, true);
    EXPECT_EQ(descriptors(), before);
}

TEST_F(SharedBuffer, ModesDoNotDependOnTheUmask) {
    const mode_t old = ::umask(077);
    ::chmod(mp::sharedDirectory().c_str(), 0700);
    const Buffer buffer(name, true);
    ::umask(old);
    EXPECT_EQ(modeOf(path), 0644u);
    EXPECT_EQ(modeOf(mp::sharedDirectory()), 0777u);
}

TEST_F(SharedBuffer, ReadingEndsWhereAnotherCutsTheObject) {
    Buffer reader(name, true);
    const std::jthread cutting([&](const std::stop_token& stop) {
        const std::string content(100'000, 'x');
        while (!stop.stop_requested()) {
            std::ofstream(path, std::ios::binary | std::ios::trunc) << content;
            EXPECT_EQ(::truncate(path.c_str(), 0), 0);
        }
    });
    for (int found = 0; found < 50;) {
        const std::string bytes = bytesOf(reader);
        ASSERT_EQ(bytes.find_first_not_of('x'), std::string::npos) << "bytes that nobody wrote";
        if (!bytes.empty()) ++found;
    }
}

TEST_F(SharedBuffer, AnotherProcessReadsWhatOneWrote) {
    const pid_t child = zeq::test::startChild([&] {
        Buffer writer(name, false);
        put(writer, "from the child");
    });
    ASSERT_EQ(zeq::test::waitForChild(child), 0);
    EXPECT_EQ(bytesOf(Buffer(name, true)), "from the child");
}

TEST_F(SharedBuffer, CreatingAndRemovingOneNameAtOnceIsSafe) {
    const auto openAndRemove = [&] {
        for (int i = 0; i < 3000; ++i) EXPECT_EQ(errorOf([&] { Buffer(name, true); }), L"no exception");
    };
    const pid_t child = zeq::test::startChild(openAndRemove);
    openAndRemove();
    EXPECT_EQ(zeq::test::waitForChild(child), 0);
    EXPECT_FALSE(fs::exists(path));
}

TEST(SharedDirectory, ALinkInItsPlaceIsNotFollowed) {
    zeq::test::withOwnTmp([] {
        fs::create_directory("/tmp/elsewhere");
        std::ofstream("/tmp/elsewhere/name") << "precious";
        fs::create_directory_symlink("/tmp/elsewhere", mp::sharedDirectory());
        EXPECT_EQ(errorOf([] { Buffer(L"name", true); }), systemText(ENOTDIR));
        mp::removeObject(L"name");
        EXPECT_EQ(contentOf("/tmp/elsewhere/name"), "precious");
        fs::remove(mp::sharedDirectory());
        std::ofstream(mp::sharedDirectory()) << "a file";
        EXPECT_EQ(errorOf([] { Buffer(L"name", true); }), systemText(ENOTDIR));
    });
}

TEST(SharedDirectory, IsMadeOnlyToOpenObjects) {
    zeq::test::withOwnTmp([] {
        ::umask(077);
        mp::removeObject(L"name");
        EXPECT_FALSE(fs::exists(mp::sharedDirectory()));
        const Buffer buffer(L"name", true);
        EXPECT_EQ(modeOf(mp::sharedDirectory()), 0777u);
    });
}

TEST(SharedDirectory, AFullDiskIsAnExceptionAndGivesItsSpaceBack) {
    zeq::test::withOwnTmp([] {
        Buffer buffer(L"name", true);
        const std::string tooMuch(2 << 20, 'x');
        EXPECT_EQ(errorOf([&] { put(buffer, tooMuch); }), systemText(ENOSPC));
        EXPECT_EQ(bytesOf(buffer), "");
        put(buffer, std::string(500'000, 'y'));
        EXPECT_EQ(bytesOf(buffer).size(), 500'000u);
    });
}

} // namespace
