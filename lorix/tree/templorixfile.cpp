// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/tree/templorixfile.h>

#include <lorix/container/lorixparser.h>

#include <QDir>

namespace lorix {

TempLorixfile::TempLorixfile(const QSharedPointer<LorixParser>& parser, const QString& filePath,
                             bool removeOnDestruction)
    : m_parser(parser), m_filePath(filePath), m_removeOnDestruction(removeOnDestruction)
{}

TempLorixfile::~TempLorixfile()
{
    // Some systems do not remove a file that is open.
    m_parser.reset();
    if (m_removeOnDestruction)
        QDir().remove(m_filePath);
}

} // namespace lorix
