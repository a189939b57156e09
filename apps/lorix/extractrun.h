// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <apps/lorix/answer.h>
#include <apps/lorix/targetfolder.h>

#include <lorix/container/lorixparser.h>

#include <QList>
#include <QString>

#include <atomic>
#include <functional>

namespace lorix::cli {

class VerifyingQueue;

/// One file to extract, and what came out of it.
struct ExtractItem
{
    FileTag file;
    QString name; ///< Relative path below the target folder.

    bool written = false;    ///< Whether it stands under its name now.
    QList<Finding> findings; ///< What is wrong with the embedded file.
    QString failure;         ///< Why it could not be written, in words.
};

/// Extracts many files with several extraction queues side by side, each on a
/// thread and a parser of its own. Results stand where the items stand.
class ExtractRun
{
public:
    struct Options
    {
        int jobs = 1;
        bool verify = false;  ///< Compare both digests as the bytes pass.
        bool keepBad = false; ///< Give damaged files their name all the same.
    };

    /// A run over `items`, files of `parser`, which has `path` open.
    ExtractRun(LorixParser& parser, const QString& path, const TargetFolder& folder,
               const Options& options, QList<ExtractItem>& items);

    /// Works; `tick` is called on this thread every now and then with the
    /// stored bytes done so far. False when ctrl-C ended it early; then files
    /// that are complete stay and nothing is left of the others.
    bool run(const std::function<void(qint64)>& tick);

    /// The stored bytes of all items.
    qint64 totalBytes() const { return m_totalBytes; }

private:
    ExtractItem* takeNext();
    void work(LorixParser& parser, const std::function<void()>& afterStep);
    void extract(VerifyingQueue& queue, LorixParser& parser, ExtractItem& item,
                 const std::function<void()>& afterStep);
    bool write(VerifyingQueue& queue, ExtractItem& item, const QString& part,
               const std::function<void()>& afterStep);
    bool writeWithoutStoredDigest(LorixParser& parser, ExtractItem& item, const QString& part);
    void verify(VerifyingQueue& queue, ExtractItem& item) const;

    LorixParser& m_parser;
    QString m_path;
    qint64 m_fileBytes;
    const TargetFolder& m_folder;
    Options m_options;
    QList<ExtractItem>& m_items;
    ExtractItem* m_first = nullptr;
    QList<int> m_order;
    qint64 m_totalBytes = 0;
    std::atomic<int> m_next{0};
    std::atomic<qint64> m_done{0};
};

} // namespace lorix::cli
