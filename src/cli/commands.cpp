// SPDX-License-Identifier: GPL-3.0-or-later
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
    "  info [--json] [--items] PATH...\n"
    "                          Import files and folders (folders are scanned\n"
    "                          recursively) and print each media record as JSON.\n"
    "  tree [--json] FILE...   Print each photo's metadata groups and keys.\n"
    "  set [FIELDS] FILE...    Write copies with changed fields (--title, --artist,\n"
    "                          --shoot-date, --latitude, ...) into the storage folder.\n"
    "  strip [FLAGS] FILE...   Write copies with the metadata removed (photos:\n"
    "                          --iptc, --exif, --gps, --exif-gps or --all).\n"
    "  gps --latitude DEG --longitude DEG --altitude M --gps-date D --gps-time T FILE...\n"
    "                          Write copies of photos with a new position.\n"
    "  photo-date --date DATE FILE...\n"
    "                          Write copies of photos with new Exif and TIFF dates.\n"
    "  stamp [--font F --size N --color #RRGGBB --position P --layout L] FILE...\n"
    "                          Write JPEG copies of photos with their date drawn in.\n"
    "  title-to-name FILE...   Copy each video under its recorded title.\n"
    "  name-to-title FILE...   Write copies whose title is the file name.\n"
    "  created-to-recorded FILE...\n"
    "                          Write copies whose recorded date is the creation date.\n"
    "  recorded-to-created FILE...\n"
    "                          Copy each video with its recorded date as file date.\n"
    "  name-date-to-recorded FILE...\n"
    "                          Write copies whose recorded date is read from the name.\n"
    "  rename (--text TEXT [--number] | --template T) [--dry-run] FILE...\n"
    "                          Rename files in place; rename --undo puts them back.\n"
    "  set-date --date DATE [--step N --unit U] FILE...\n"
    "  shift-date (--add | --subtract) [--years N] ... [--seconds N] FILE...\n"
    "                          Write copies with a new or shifted recorded date.\n"
    "  copy-date --from FIELD --to FIELD FILE...\n"
    "                          Copy one date (or the name) into another field.\n"
    "  export FLAG FILE...     Write metadata into a property list.\n"
    "  import FLAG PLIST FILE...\n"
    "                          Apply a property list to copies of the files.\n"
    "  xmp FOLDER...           Apply the XMP sidecars in folders to the videos\n"
    "                          beside them (the videos are replaced).\n"
    "  convert --to mp4|mov|m4v FILE...\n"
    "                          Copy videos into another container (no re-encoding).\n"
    "  compress --quality high|medium|low FILE...\n"
    "                          Re-encode videos (H.264/AAC) at a quality level.\n"
    "  extract-audio FILE...   Write the sound of videos as M4A files.\n"
    "  remove-audio FILE...    Write videos without their sound.\n"
    "  gif FILE...             Write an animated GIF of one picture per second.\n"
    "  speed --factor F FILE...\n"
    "                          Keep the first 1/F of each movie (no retiming).\n"
    "  slow --factor 0.2|0.5 FILE...\n"
    "                          Make movies 1/F times longer (slow motion).\n"
    "  frames --every 0.2|1|5|10|30 FILE...\n"
    "                          Write pictures of videos at a regular interval.\n"
    "  check-update [--url URL]\n"
    "                          Say whether a newer version is published.\n"
    "  camera [--port PORT] list | download [ITEM...] | delete [--yes] ITEM...\n"
    "                          List, download or delete a camera's photos and movies.\n"
    "\n"
    "New files go into the storage folder (the app's preference, or --storage DIR);\n"
    "the files given are only read. A file there is replaced only when tagsmith\n"
    "wrote it; otherwise the new file gets a free name (\"clip (2).mov\").\n"
    "Writing commands print one line per file: the new file's path, or\n"
    "\"skipped: REASON\" or \"failed: REASON\". Exit status: 0 when every file was\n"
    "written, 1 when any was skipped or failed, 2 for a usage error.\n"
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
    if (command == QLatin1String("set")) return runSet(rest);
    if (command == QLatin1String("strip")) return runStrip(rest);
    if (command == QLatin1String("tree")) return runTree(rest);
    if (command == QLatin1String("gps")) return runGps(rest);
    if (command == QLatin1String("photo-date")) return runPhotoDate(rest);
    if (command == QLatin1String("stamp")) return runStamp(rest);
    if (command == QLatin1String("check-update")) return runCheckUpdate(rest);
    if (command == QLatin1String("camera")) return runCamera(rest);
    if (const int code = runVideoTool(command, rest); code >= 0) return code;
    if (const int code = runBatchTool(command, rest); code >= 0) return code;
    if (const int code = runMediaTool(command, rest); code >= 0) return code;
    std::fprintf(stderr, "tagsmith-cli: unknown command '%s'\n\n%s", qPrintable(command), kUsage);
    return 2;
}
