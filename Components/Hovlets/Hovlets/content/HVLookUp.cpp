// SPDX-License-Identifier: Apache-2.0
#include "HVLookUp.h"

#include "HVContentLocale.h"
#include "HVFileMemory.h"
#include "HVIndex.h"
#include "HVPackageFiles.h"

namespace Hovlets {

HVFoundContent lookUp(const HVRetrieve &retrieve)
{
    QString path;
    int depth = 1;
    HVXmlElement *root = nullptr;
    HVXmlElement *entry = retrieve(path, depth, root);
    if (!entry)
        return { HVContentTree(), QString() };
    return { HVContentTree(entry, root), folderAbove(path, depth - 1) };
}

HVXmlElement *retrieveByLocale(HVIndex &index, const HVContext &settings, const QString &key,
                               QString &path, int &depth, HVXmlElement *&root)
{
    const QVector<QLocale> locales = contentLocales(settings, preferredContentLocale(settings));
    const quint64 current = HVToolTipPass::current();
    const HVToolTipPass pass(current != 0 ? current : HVToolTipPass::next());
    for (const QLocale &locale : locales) {
        if (HVXmlElement *entry = index.retrieve(key, locale, path, depth, root))
            return entry;
    }
    return nullptr;
}

} // namespace Hovlets
