#include "formats/file_bytes.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <thread>

#include "base/failure.h"
#include "test_files.h"

using docprep::Bytes;
using docprep::Descriptor;

namespace {

std::string refusal(const std::string& path) {
    try {
        docprep::read_file(path);
        return "";
    } catch (const docprep::Failure& failure) {
        EXPECT_EQ(path, failure.file());
        return failure.what();
    }
}

/// Enough for many rounds of a pipe.
Bytes much() {
    Bytes bytes(300001);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<unsigned char>(i * 7 + i / 256);
    return bytes;
}

/// While it lives, standard input is another descriptor.
class StandardInput {
 public:
    explicit StandardInput(int fd) : saved_(dup(STDIN_FILENO)) { dup2(fd, STDIN_FILENO); }
    ~StandardInput() { dup2(saved_.get(), STDIN_FILENO); }

 private:
    Descriptor saved_;
};

}  // namespace

TEST(file_bytes, files_are_read_whole) {
    const TemporaryFolder folder;
    EXPECT_EQ(much(), docprep::read_file(folder.write("file", much())));
    EXPECT_EQ(Bytes(), docprep::read_file(folder.write("empty", "")));
}

TEST(file_bytes, links_lead_to_files) {
    const TemporaryFolder folder;
    folder.write("file", "content");
    std::filesystem::create_symlink("file", folder.path("link"));
    EXPECT_EQ(bytes_of("content"), docprep::read_file(folder.path("link")));
}

TEST(file_bytes, a_named_pipe_is_read_to_its_end) {
    const TemporaryFolder folder;
    const std::string path = folder.path("pipe");
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    std::thread writer([&] { folder.write("pipe", much()); });
    EXPECT_EQ(much(), docprep::read_file(path));
    writer.join();
}

TEST(file_bytes, a_descriptor_of_a_pipe_is_read_to_its_end) {
    int ends[2];
    ASSERT_EQ(0, pipe(ends));
    const Descriptor out(ends[0]);
    {
        const Descriptor in(ends[1]);
        ASSERT_EQ(7, write(in.get(), "content", 7));
    }
    EXPECT_EQ(bytes_of("content"), docprep::read_file("/dev/fd/" + std::to_string(out.get())));
}

TEST(file_bytes, a_dash_is_standard_input_from_where_it_stands) {
    const TemporaryFolder folder;
    const Descriptor file(open(folder.write("file", "content").c_str(), O_RDONLY));
    ASSERT_EQ(3, lseek(file.get(), 3, SEEK_SET));
    const StandardInput input(file.get());
    EXPECT_EQ(bytes_of("tent"), docprep::read_file("-"));
    EXPECT_EQ(Bytes(), docprep::read_file("-"));
}

TEST(file_bytes, folders_devices_and_sockets_are_refused_by_name) {
    const TemporaryFolder folder;
    EXPECT_EQ("is a folder", refusal(folder.path("")));
    EXPECT_EQ("is a device", refusal("/dev/zero"));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = folder.path("socket");
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    const Descriptor listening(socket(AF_UNIX, SOCK_STREAM, 0));
    ASSERT_EQ(0, bind(listening.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
    EXPECT_EQ("is a socket", refusal(path));
    {
        const Descriptor device(open("/dev/null", O_RDONLY));
        const StandardInput input(device.get());
        EXPECT_EQ("is a device", refusal("-"));
    }
    const Descriptor above(open(folder.path("").c_str(), O_RDONLY | O_DIRECTORY));
    const StandardInput input(above.get());
    EXPECT_EQ("is a folder", refusal("-"));
}

TEST(file_bytes, what_is_not_there_is_the_systems_reason) {
    const TemporaryFolder folder;
    EXPECT_EQ("No such file or directory", refusal(folder.path("none")));
    std::filesystem::create_symlink("loop", folder.path("loop"));
    EXPECT_EQ("Too many levels of symbolic links", refusal(folder.path("loop")));
}

TEST(file_bytes, a_longer_file_is_refused_before_it_is_read) {
    const TemporaryFolder folder;
    const std::string path = folder.write("huge", "");
    std::filesystem::resize_file(path, static_cast<uintmax_t>(docprep::kMostFileBytes) + 1);
    EXPECT_EQ("is larger than 1024 MiB", refusal(path));
}
