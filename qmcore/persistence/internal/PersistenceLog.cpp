#include "qmcore/persistence/internal/PersistenceLog.hpp"

#include <cstdio>

namespace qm::internal {
namespace {

thread_local ScopedLogCapture* currentCapture = nullptr;
thread_local std::vector<std::string>* currentLines = nullptr;

}  // namespace

void writePersistenceLogLine(const std::string& line) {
  if (currentLines != nullptr) {
    currentLines->push_back(line);
    return;
  }
  std::fprintf(stderr, "debuglog[:] %s\n", line.c_str());
}

ScopedLogCapture::ScopedLogCapture() : previous_(currentCapture) {
  currentCapture = this;
  currentLines = &lines_;
}

ScopedLogCapture::~ScopedLogCapture() {
  currentCapture = previous_;
  currentLines = previous_ != nullptr ? &previous_->lines_ : nullptr;
}

}  // namespace qm::internal
