// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A part that few popups need. Its file is compiled when the first popup needs it, so other popups show
// sooner.
Loader {
    id: part

    required property string file
    required property bool needed
    // The initial properties of the part.
    property var properties: ({})
    property bool complete: false

    onNeededChanged: load()
    Component.onCompleted: {
        complete = true;
        load();
    }

    function load() {
        if (!complete)
            return;
        if (needed)
            setSource(file, properties);
        else
            source = "";
    }
}
