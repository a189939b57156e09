// SPDX-License-Identifier: BSD-3-Clause
#include <apps/lorix/checkrun.h>

#include <apps/lorix/container.h>
#include <apps/lorix/crew.h>
#include <apps/lorix/interrupt.h>

#include <lorix/queues/validationqueue.h>

#include <QFileInfo>

#include <algorithm>

namespace lorix::cli {

namespace {

constexpr qint64 chunkBytes = 100000;
} // namespace

// One queue on the thread that made it.
class CheckRun::Worker
{
public:
    Worker(LorixParser* parser, CheckRun& run)
        : m_run(run), m_parser(parser), m_queue(parser, chunkBytes)
    {
        QObject::connect(&m_queue, &ValidationQueue::sectionProcessed, &m_queue,
                         [this](int, bool valid) { m_valid = valid; });
        QObject::connect(&m_queue, &ValidationQueue::fileProcessed, &m_queue,
                         [this](int, bool valid) { m_valid = valid; });
        QObject::connect(&m_queue, &ValidationQueue::savedFileProcessed, &m_queue,
                         [this](const QString&, bool valid) { m_valid = valid; });
    }

    void check(CheckItem& item, const std::function<void()>& afterStep)
    {
        enqueue(item);
        m_valid = false;
        qint64 counted = 0;
        for (bool more = true; more;) {
            more = m_queue.process();
            const qint64 rest = item.size - counted;
            const qint64 step = more ? std::min(chunkBytes, rest) : rest;
            counted += step;
            m_run.m_done += step;
            afterStep();
            if (more && Interrupt::requested()) {
                m_queue.cancelValidation();
                return;
            }
        }
        item.checked = true;
        item.valid = m_valid;
        if (!item.valid)
            explain(item);
    }

private:
    void enqueue(const CheckItem& item)
    {
        if (item.kind == CheckItem::Saved)
            m_queue.addValidatees({item.saved});
        else if (item.kind == CheckItem::Section)
            m_queue.addValidatees({}, {item.id});
        else
            m_queue.addValidatees({item.id}, {});
    }

    void explain(CheckItem& item)
    {
        if (item.kind == CheckItem::Section)
            item.diagnosis = diagnose(*m_parser, *m_parser->getSection(item.id), m_run.m_fileBytes);
        else if (item.kind == CheckItem::File)
            item.diagnosis = diagnose(*m_parser, *m_parser->getFile(item.id), m_run.m_fileBytes);
    }

    CheckRun& m_run;
    LorixParser* m_parser;
    ValidationQueue m_queue;
    bool m_valid = false;
};

CheckRun::CheckRun(LorixParser* parser, const QString& path, QList<CheckItem>& items)
    : m_parser(parser), m_path(path), m_fileBytes(QFileInfo(path).size()), m_items(items)
{
    for (int i = 0; i < items.size(); ++i) {
        m_order.append(i);
        m_totalBytes += items.at(i).size;
    }
    std::stable_sort(m_order.begin(), m_order.end(),
                     [&items](int a, int b) { return items.at(a).size > items.at(b).size; });
}

CheckItem* CheckRun::takeNext()
{
    const int next = m_next++;
    if (next >= m_order.size() || Interrupt::requested())
        return nullptr;
    return m_first + m_order.at(next);
}

void CheckRun::work(LorixParser* parser, const std::function<void()>& afterStep)
{
    Worker worker(parser, *this);
    while (CheckItem* item = takeNext())
        worker.check(*item, afterStep);
}

void CheckRun::workElsewhere()
{
    const auto nothing = [] {};
    LorixParser parser;
    if (!m_parser)
        work(nullptr, nothing);
    else if (openAgain(parser, m_path, *m_parser))
        work(&parser, nothing);
}

bool CheckRun::run(int jobs, const std::function<void(qint64)>& tick)
{
    m_first = m_items.data(); // Detached here, before several threads write to it.
    const auto tell = [&] { tick(m_done); };
    runCrew(
        usefulJobs(jobs, m_items.size(), m_totalBytes), [&] { work(m_parser, tell); },
        [this] { workElsewhere(); }, tell);
    return !Interrupt::requested();
}

} // namespace lorix::cli
