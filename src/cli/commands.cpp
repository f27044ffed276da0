#include "cli/commands.h"

#include <QTextStream>

#include <cstdio>

namespace {

const char* const kUsage =
    "Usage: tagsmith-cli [--verbose] COMMAND [OPTIONS] ...\n"
    "\n"
    "Reads and edits the metadata of video, audio and photo files.\n"
    "\n"
    "Commands:\n"
    "  info [--json] PATH...   Import files and folders (folders are scanned\n"
    "                          recursively) and print each media record as JSON.\n"
    "\n"
    "Options:\n"
    "  -v, --verbose           also print informational log lines on stderr\n"
    "  --version               print the version\n"
    "\n"
    "Run 'tagsmith-cli COMMAND --help' for the options of a command.\n";

}  // namespace

int runCommand(const QStringList& args) {
    if (args.isEmpty() || args.first() == QLatin1String("--help") ||
        args.first() == QLatin1String("-h")) {
        std::fputs(kUsage, args.isEmpty() ? stderr : stdout);
        return args.isEmpty() ? 2 : 0;
    }
    if (args.first() == QLatin1String("--version")) {
        std::printf("tagsmith-cli %s\n", TAGSMITH_VERSION);
        return 0;
    }
    const QString command = args.first();
    const QStringList rest = args.mid(1);
    if (command == QLatin1String("info")) return runInfo(rest);
    std::fprintf(stderr, "tagsmith-cli: unknown command '%s'\n\n%s", qPrintable(command), kUsage);
    return 2;
}
