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
    const QLocale preferred = preferredContentLocale(settings);
    const QLocale fallback = fallbackContentLocale(settings);
    const quint64 current = HVToolTipPass::current();
    const HVToolTipPass pass(current != 0 ? current : HVToolTipPass::next());
    HVXmlElement *entry = index.retrieve(key, preferred, path, depth, root);
    return entry ? entry : index.retrieve(key, fallback, path, depth, root);
}

} // namespace Hovlets
