// SPDX-License-Identifier: BSD-3-Clause
#include <lorix/argfile/userattributes.h>

namespace lorix {

void UserAttributes::add(const QString& key, const QString& value)
{
    keys.append(key);
    values.insert(key, value);
}

void UserAttributes::clear()
{
    values.clear();
    keys.clear();
}

bool UserAttributes::operator==(const UserAttributes& other) const
{
    return values == other.values && keys == other.keys;
}

} // namespace lorix
