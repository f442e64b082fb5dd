#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <csignal>
#include <thread>

#include "file_io.h"
#include "temporary_file.h"
#include "tools/tool.h"

namespace {

using Names = std::vector<std::string>;

class Writing : public ToolTest {
 protected:
  // Runs a child process in the directory, by which signals are not ignored, but for one.
  template <class Work>
  pid_t Child(const Work& work, int ignored = 0) const {
    const pid_t child = fork();
    if (child != 0) return child;
    for (int signal = 1; signal <= SIGRTMAX; ++signal) std::signal(signal, signal == ignored ? SIG_IGN : SIG_DFL);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    std::filesystem::current_path(Path("."));
    work();
    _exit(127);
  }

  // Sends a signal to the tool after the first frame of a pipe, which ends then.
  int StatusAfter(int signal, bool ignored) const {
    int frames[2];
    EXPECT_EQ(pipe2(frames, O_CLOEXEC), 0);
    const auto convert = [&] {
      dup2(frames[0], STDIN_FILENO);
      execl(LM_TOOL, LM_TOOL, "convert", "/dev/stdin", "out.raw", "--from", "Mono8", "--to", "Mono8", "--size", "4x1",
            "--frames", "all", nullptr);
    };
    const pid_t tool = Child(convert, ignored ? signal : 0);
    EXPECT_EQ(write(frames[1], "abcd", 4), 4);
    for (int i = 0; Files().empty() && i < 10000; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(Files().size(), 1U) << "the file that is being written";
    kill(tool, signal);
    if (!ignored) waitid(P_PID, static_cast<id_t>(tool), nullptr, WEXITED | WNOWAIT);
    close(frames[0]);
    close(frames[1]);
    int status = 0;
    waitpid(tool, &status, 0);
    return status;
  }

  struct stat StatusOf(const char* name) const {
    struct stat status {};
    EXPECT_EQ(lstat(Path(name).c_str(), &status), 0) << name;
    return status;
  }
};

TEST_F(Writing, SignalsEndTheToolAndLeaveNothing) {
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGUSR1, SIGPIPE, SIGALRM, SIGTERM, SIGXCPU, SIGRTMAX}) {
    const int status = StatusAfter(signal, false);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << strsignal(signal) << ": " << status;
    EXPECT_EQ(Files(), Names{}) << strsignal(signal);
  }
  EXPECT_EQ(StatusAfter(SIGHUP, true), 0) << "nohup";
  EXPECT_EQ(Read("out.raw"), (Bytes{'a', 'b', 'c', 'd'}));
}

TEST_F(Writing, SignalsRemoveAllFilesThatAreBeingWritten) {
  const pid_t child = Child([] {
    LmTool::CatchEndingSignals();
    LmTool::FileWriter first("A", "a"), second("B", "b"), third("C", "c");
    for (int i = 0; i < 20; ++i) LmTool::WriteFile("D", "d", {4});
    second.Write({2});
    second.Commit();
    raise(SIGTERM);
  });
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM) << status;
  EXPECT_EQ(Files(), (Names{"b", "d"}));
}

TEST_F(Writing, FileSizeLimitIsAnError) {
  Write("out.raw", {9});
  for (const std::string size : {"40x40", "640x480"}) {  // less than a buffer, and more
    const ToolResult result = Shell("ulimit -f 1 && '" LM_TOOL "' synth out.raw --type Mono8 --size " + size);
    EXPECT_EQ(result.exitCode, 1) << size << result.output;
    EXPECT_NE(result.output.find("DESTINATION: cannot write 'out.raw'"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("ulimit -f"), std::string::npos) << result.output;
    EXPECT_EQ(Files(), Names{"out.raw"});
    EXPECT_EQ(Read("out.raw"), Bytes{9});
  }
}

TEST_F(Writing, PermissionsOwnerAndGroupStay) {
  constexpr uid_t kNobody = 65534;
  std::filesystem::permissions(Path("."), std::filesystem::perms::all);
  const bool root = geteuid() == 0;
  const std::string user = root ? "setpriv --reuid 65534 --regid 65534 --clear-groups " : "";
  if (Shell(user + "'" LM_TOOL "' --version").exitCode != 0) GTEST_SKIP() << "needs setpriv, or another user than root";

  struct Case {
    const char* what;
    bool byRoot;
    uid_t owner;
    gid_t group;
    mode_t before, after;
    const char* refusal;
  };
  const Case cases[] = {
      {"root's", true, 0, 0, 0640, 0640, nullptr},
      {"anyone's", true, 1234, 2345, 0604, 0604, nullptr},
      {"read-only, which root may write", true, 1234, 2345, 0444, 0444, nullptr},
      {"own", false, kNobody, kNobody, 0666, 0666, nullptr},
      {"of a group that is not the user's", false, kNobody, 2345, 0674, 0644, nullptr},
      {"own, read-only", false, kNobody, kNobody, 0444, 0444, "Permission denied"},
      {"another user's", false, 1234, kNobody, 0666, 0666, "belongs to user 1234"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    if (!root && (c.byRoot || c.owner != kNobody || c.group != kNobody)) continue;
    std::filesystem::remove(Path("out.raw"));
    Write("out.raw", {9});
    chmod(Path("out.raw").c_str(), c.before);
    ASSERT_TRUE(!root || chown(Path("out.raw").c_str(), c.owner, c.group) == 0);
    const ToolResult result = Shell((c.byRoot ? "" : user) + "'" LM_TOOL "' synth out.raw --type Mono8 --size 2x1");
    EXPECT_EQ(result.exitCode, c.refusal == nullptr ? 0 : 1) << result.output;
    EXPECT_NE(result.output.find(c.refusal == nullptr ? "" : c.refusal), std::string::npos) << result.output;
    const struct stat status = StatusOf("out.raw");
    EXPECT_EQ(status.st_size, c.refusal == nullptr ? 2 : 1);
    EXPECT_EQ(status.st_mode & 07777, c.after);
    EXPECT_TRUE(!root || status.st_uid == c.owner) << status.st_uid;
    EXPECT_TRUE(!root || status.st_gid == (c.after == c.before ? c.group : kNobody)) << status.st_gid;
    EXPECT_EQ(Files(), Names{"out.raw"});
  }
  EXPECT_EQ(Shell("umask 027; '" LM_TOOL "' synth new.raw --type Mono8 --size 2x1").output, "");
  EXPECT_EQ(StatusOf("new.raw").st_mode & 07777, 0640U);
}

TEST_F(Writing, SymbolicLinksAreFollowed) {
  struct Link {
    const char* name;
    const char* to;
    const char* file;
  };
  std::filesystem::create_directory(Path("folder"));
  Write("folder/file.raw", {9});
  for (const Link& link :
       {Link{"link.raw", "folder/file.raw", "folder/file.raw"},
        Link{"dangling.raw", "folder/new.raw", "folder/new.raw"},
        Link{"folder/chain.raw", "../dangling.raw", "folder/new.raw"}, Link{"loop.raw", "loop.raw", nullptr}}) {
    std::filesystem::create_symlink(link.to, Path(link.name));
    const ToolResult result = Run(std::string("synth --type Mono8 --size 2x1 ") + link.name);
    EXPECT_EQ(result.exitCode, link.file != nullptr ? 0 : 1) << result.output;
    EXPECT_EQ(std::filesystem::read_symlink(Path(link.name)), link.to);
    if (link.file == nullptr) continue;
    EXPECT_EQ(Read(link.file).size(), 2U) << link.name;
    std::filesystem::remove(Path(link.file));
  }
}

TEST_F(Writing, NamesMayBeAsLongAsTheSystemAllows) {
  const std::string name = std::string(NAME_MAX - 4, 'n') + ".raw";
  RunSilently("synth --type Mono8 --size 2x1 " + name);
  EXPECT_EQ(Files(), Names{name});
}

}  // namespace
