// The handler may run at any moment, possibly with the heap corrupted, so it
// only touches fixed buffers filled at install time and calls nothing but
// open, write, close, signal and raise (all async-signal-safe).
#include "platform/crash.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/app_info.h"
#include "platform/paths.h"

namespace platform {

namespace {

char g_path[512];
char g_header[512];
size_t g_headerLen = 0;
char g_context[192];
volatile sig_atomic_t g_ready = 0;

constexpr int kFatalSignals[] = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS, SIGTRAP};

const char* signalText(int sig) {
  switch (sig) {
    case 4: return "SIGILL (unerlaubter Befehl)\n";
    case 5: return "SIGTRAP (fataler GLib-Fehler \xE2\x80\x94 fehlt eine Ressource?)\n";
    case 6: return "SIGABRT (abgebrochen)\n";
    case 7: return "SIGBUS (Busfehler)\n";
    case 8: return "SIGFPE (Rechenfehler)\n";
    case 11: return "SIGSEGV (Zugriff auf fremden Speicher)\n";
    default: return "unbekanntes Signal\n";
  }
}

constexpr char kFooterStart[] = "\nDiese Datei wird NICHT verschickt. Wenn du magst, schick sie an\n";
constexpr char kFooterEnd[] = " \xE2\x80\x94 daraus laesst sich der Fehler finden.\n";

void writeAll(int fd, const char* text, size_t len) {
  while (len > 0) {
    const ssize_t n = ::write(fd, text, len);
    if (n < 1) return;
    text += n;
    len -= static_cast<size_t>(n);
  }
}

void writeText(int fd, const char* text) { writeAll(fd, text, std::strlen(text)); }

void onFatalSignal(int sig) {
  if (g_ready) {
    const int fd = ::open(g_path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd >= 0) {
      writeAll(fd, g_header, g_headerLen);
      writeText(fd, "Signal: ");
      writeText(fd, signalText(sig));
      if (g_context[0] != '\0') {
        writeText(fd, "Zuletzt: ");
        writeText(fd, g_context);
        writeText(fd, "\n");
      }
      writeText(fd, kFooterStart);
      writeText(fd, kSupportEmail);
      writeText(fd, kFooterEnd);
      ::close(fd);
    }
  }
  // Die the way we would have without the handler (exit status, core dump).
  std::signal(sig, SIG_DFL);
  std::raise(sig);
}

}  // namespace

void installCrashHandler() {
  const char* runtime = std::getenv("XDG_RUNTIME_DIR");
  const std::string base = (runtime && *runtime) ? std::string(runtime) : paths::dataDir();
  std::snprintf(g_path, sizeof g_path, "%s/%s_crash.txt", base.c_str(), kAppDirName);
  std::snprintf(g_header, sizeof g_header,
                                "%s %s (Build %d)\nportiert aus %s\n"
                                "-----------------------------------------\n",
                                kAppTitle, kAppVersion, kAppBuild, kSourceLabel);
  g_headerLen = std::strlen(g_header);
  g_context[0] = '\0';
  g_ready = 1;
  for (int sig : kFatalSignals) std::signal(sig, onFatalSignal);
}

void setCrashContext(const char* text) {
  if (!text) {
    g_context[0] = '\0';
    return;
  }
  std::snprintf(g_context, sizeof g_context, "%.120s", text);
}

const char* crashContext() { return g_context; }

const char* crashReportPath() { return g_path; }

}  // namespace platform
