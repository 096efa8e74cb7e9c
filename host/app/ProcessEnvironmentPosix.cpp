#include "app/ProcessEnvironment.h"

#include <csignal>
#include <system_error>
#include <unistd.h>

std::filesystem::path ProcessEnvironment::ProgramFolder() {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path(".") : self.parent_path();
}

const char* ProcessEnvironment::PluginFileName() {
    return "ztodpds.so";
}

std::vector<std::string> ProcessEnvironment::Utf8Arguments(int argc, char** argv) {
    return std::vector<std::string>(argv, argv + argc);
}

void ProcessEnvironment::UseBinaryStandardStreams() {}

void ProcessEnvironment::FailWritesInsteadOfSignals() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

bool ProcessEnvironment::IsTerminal(int descriptor) {
    return ::isatty(descriptor) != 0;
}
