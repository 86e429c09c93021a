// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <memory>

namespace HovletsTool {

class FindingList;

/*!
 * \brief Validates a well-formed file against a schema, branch by branch.
 *
 * Call check() for each branch in document order, then finish().
 */
class SchemaCheck
{
public:
    /// \param schema "hovlets" or "hovletkeys"
    SchemaCheck(const QString &schema, const QString &path, const XmlDocument &document,
                FindingList &findings);
    ~SchemaCheck();
    Q_DISABLE_COPY_MOVE(SchemaCheck)

    void check(const XmlDocument::Branch &branch);
    void finish();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace HovletsTool
