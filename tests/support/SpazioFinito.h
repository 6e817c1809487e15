#pragma once

#ifndef _WIN32
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

namespace lapvane::prova {

/// A medium with room for files of so many bytes, as long as it lives: a write fails in the middle,
/// as on a full disk.
class SpazioFinito {
 public:
    explicit SpazioFinito(rlim_t byte) {
        prima_ = ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &limite_);
        const rlimit stretto{byte, limite_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &stretto);
    }
    ~SpazioFinito() {
        ::setrlimit(RLIMIT_FSIZE, &limite_);
        ::signal(SIGXFSZ, prima_);
    }
    SpazioFinito(const SpazioFinito&) = delete;
    SpazioFinito& operator=(const SpazioFinito&) = delete;

 private:
    rlimit limite_{};
    void (*prima_)(int) = nullptr;
};

/// As long as it lives nobody is almighty: folders and files forbid what their modes say.
class SenzaPrivilegi {
 public:
    SenzaPrivilegi() : prima_(::geteuid()) {
        constexpr uid_t kNessuno = 65534;
        if (prima_ == 0) riuscito_ = ::setresuid(kNessuno, kNessuno, prima_) == 0;
    }
    ~SenzaPrivilegi() {
        if (riuscito_) static_cast<void>(::setresuid(prima_, prima_, prima_) == 0);
    }
    SenzaPrivilegi(const SenzaPrivilegi&) = delete;
    SenzaPrivilegi& operator=(const SenzaPrivilegi&) = delete;

 private:
    uid_t prima_;
    bool riuscito_ = false;
};

}  // namespace lapvane::prova
#endif
