#include "support/RunProgram.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string ReadAll(const std::string& path) {
    std::string text;
    if (std::FILE* f = std::fopen(path.c_str(), "rb")) {
        char buffer[4096];
        std::size_t n;
        while ((n = std::fread(buffer, 1, sizeof buffer, f)) > 0)
            text.append(buffer, n);
        std::fclose(f);
    }
    return text;
}

} // namespace

std::string PdsReviewProgram() {
    return ZT_BIN_DIR "/pdsreview";
}

ProgramRun RunShellWithPdsReview(const std::string& folder, const std::string& command) {
    return RunProgram("/bin/sh",
                      {"-c", "cd '" + folder + "' && PATH='" ZT_BIN_DIR "':$PATH && " + command});
}

ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& args) {
    // Files rather than pipes, so that a large output can't stall the child.
    char outPath[] = "/tmp/zt_run_out_XXXXXX";
    char errPath[] = "/tmp/zt_run_err_XXXXXX";
    const int outFd = mkstemp(outPath);
    const int errFd = mkstemp(errPath);
    ProgramRun run;
    if (outFd < 0 || errFd < 0)
        return run;
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& arg : args)
        argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        const int nullFd = open("/dev/null", O_RDONLY);
        dup2(nullFd, 0);
        dup2(outFd, 1);
        dup2(errFd, 2);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    int status = 0;
    struct rusage usage {};
    if (pid > 0 && wait4(pid, &status, 0, &usage) == pid) {
        if (WIFEXITED(status))
            run.exitStatus = WEXITSTATUS(status);
        run.peakBytes = static_cast<std::uint64_t>(usage.ru_maxrss) * 1024; // Linux: KiB
    }
    close(outFd);
    close(errFd);
    run.out = ReadAll(outPath);
    run.err = ReadAll(errPath);
    unlink(outPath);
    unlink(errPath);
    return run;
}
