// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/summary/distanceweights.h>
#include <lorix/summary/tagdistance.h>

int distance(const lorix::FileTag& tag, const lorix::FileSummary& file)
{
    namespace weight = lorix::weight;
    const auto unlike = [](const auto& a, const auto& b, int w) { return a == b ? 0 : w; };
    return unlike(tag.filename, file.filename, weight::filename) +
           unlike(tag.md5file, file.uncompressedMD5, weight::md5file) +
           unlike(tag.filesize, file.uncompressedSize, weight::filesize) +
           unlike(tag.filetype, file.filetype, weight::filetype) +
           unlike(tag.desc, file.description, weight::desc) +
           unlike(tag.comment, file.comment, weight::comment) +
           unlike(tag.md5cfile, file.compressedMD5, weight::md5cfile) +
           unlike(tag.cfilesize, file.compressedSize, weight::cfilesize) +
           unlike(tag.compression, file.compressedMethod, weight::compression);
}

bool filesEqual(const lorix::FileSummary& file, const lorix::FileTag& tag)
{
    return file.filename == tag.filename && file.uncompressedMD5 == tag.md5file &&
           file.compressedMD5 == tag.md5cfile;
}

bool workflowstepsEqual(const lorix::Workflowstep&, const lorix::SectionTag&)
{
    return true;
}
