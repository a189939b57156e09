// SPDX-License-Identifier: BSD-3-Clause
// Runs a fuzz target over files and folders of files, without a fuzzing engine.
#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

int replayed = 0;

bool replay(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        return false;
    }
    const QByteArray bytes = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    ++replayed;
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    bool good = argc > 1;
    for (int i = 1; i < argc; ++i) {
        const QString path = QFile::decodeName(argv[i]);
        if (!QFileInfo(path).isDir()) {
            good = replay(path) && good;
            continue;
        }
        QDirIterator files(path, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            good = replay(files.next()) && good;
    }
    std::printf("%d inputs replayed\n", replayed);
    // A corpus that has gone missing must not look like one without findings.
    return good && replayed > 0 ? 0 : 1;
}
