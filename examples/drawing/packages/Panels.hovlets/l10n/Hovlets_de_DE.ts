<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- The texts of Panels.xml and keys.xml. Each context is the key of an entry. -->
<TS version="2.1" language="de_DE" sourcelanguage="en_US">
<context>
    <name>swatches</name>
    <message>
        <source>Palette</source>
        <translation>Palette</translation>
    </message>
    <message>
        <source>Click</source>
        <translation>Klick</translation>
    </message>
    <message>
        <source>A click chooses the colour of the strokes to come. What is on the canvas keeps its colour.</source>
        <translation>Ein Klick wählt die Farbe der nächsten Striche. Was schon gezeichnet ist, behält seine Farbe.</translation>
    </message>
    <message>
        <source>The colour is &lt;b&gt;%(color)s&lt;/b&gt; now.</source>
        <translation>Die Farbe ist jetzt &lt;b&gt;%(color)s&lt;/b&gt;.</translation>
    </message>
    <message>
        <source>About colours</source>
        <translation>Über Farben</translation>
    </message>
</context>
<context>
    <name>customColor</name>
    <message>
        <source>A colour of your own</source>
        <translation>Eine eigene Farbe</translation>
    </message>
    <message>
        <source>Opens a dialog in which you mix any colour, pick one from the screen or enter its number.</source>
        <translation>Öffnet einen Dialog, in dem Sie jede Farbe mischen, vom Bildschirm aufnehmen oder als Zahl eingeben können.</translation>
    </message>
    <message>
        <source>About colours</source>
        <translation>Über Farben</translation>
    </message>
</context>
<context>
    <name>penWidth</name>
    <message>
        <source>Width</source>
        <translation>Strichbreite</translation>
    </message>
    <message>
        <source>Wheel</source>
        <translation>Mausrad</translation>
    </message>
    <message>
        <source>How wide pen, lines, outlines and eraser are, in pixels of the drawing: &lt;b&gt;%(penWidth)s&lt;/b&gt; now.</source>
        <translation>Wie breit Stift, Linien, Umrisse und Radierer sind, in Pixeln der Zeichnung: jetzt &lt;b&gt;%(penWidth)s&lt;/b&gt;.</translation>
    </message>
    <message>
        <source>Turn the wheel over the number, or type it.</source>
        <translation>Drehen Sie das Mausrad über der Zahl oder tippen Sie sie ein.</translation>
    </message>
</context>
<context>
    <name>layers</name>
    <message>
        <source>Layers</source>
        <translation>Ebenen</translation>
    </message>
    <message>
        <source>Layers lie on each other like sheets of film. You draw on the one that is selected; the one at the top of the list covers those below it.</source>
        <translation>Ebenen liegen wie Folien aufeinander. Gezeichnet wird auf der ausgewählten; die oberste in der Liste verdeckt die unter ihr.</translation>
    </message>
    <message>
        <source>Three sheets above each other</source>
        <translation>Drei Folien übereinander</translation>
    </message>
    <message>
        <source>Clear a check mark to hide a layer. The items have short tooltips of their own.</source>
        <translation>Ohne Häkchen ist eine Ebene verborgen. Die Einträge haben kurze Hinweise für sich.</translation>
    </message>
    <message>
        <source>About layers</source>
        <translation>Über Ebenen</translation>
    </message>
</context>
<context>
    <name>addLayer</name>
    <message>
        <source>Add a layer</source>
        <translation>Ebene hinzufügen</translation>
    </message>
    <message>
        <source>Puts an empty, transparent layer above the selected one and selects it.</source>
        <translation>Legt eine leere, durchsichtige Ebene über die ausgewählte und wählt sie aus.</translation>
    </message>
    <message>
        <source>About layers</source>
        <translation>Über Ebenen</translation>
    </message>
</context>
<context>
    <name>removeLayer</name>
    <message>
        <source>Remove the layer</source>
        <translation>Ebene entfernen</translation>
    </message>
    <message>
        <source>Removes the selected layer with everything on it. The background cannot be removed.</source>
        <translation>Entfernt die ausgewählte Ebene mit allem, was darauf ist. Der Hintergrund lässt sich nicht entfernen.</translation>
    </message>
    <message>
        <source>About layers</source>
        <translation>Über Ebenen</translation>
    </message>
</context>
<context>
    <name>opacity</name>
    <message>
        <source>Opacity of the layer</source>
        <translation>Deckkraft der Ebene</translation>
    </message>
    <message>
        <source>How much the selected layer covers what lies below it, from invisible to opaque.</source>
        <translation>Wie sehr die ausgewählte Ebene verdeckt, was unter ihr liegt, von unsichtbar bis deckend.</translation>
    </message>
    <message>
        <source>The background is always opaque, so this works &lt;b&gt;for layers above it only&lt;/b&gt;. Add one to try.</source>
        <translation>Der Hintergrund ist immer deckend, deshalb wirkt dies &lt;b&gt;nur für Ebenen darüber&lt;/b&gt;. Fügen Sie eine hinzu.</translation>
    </message>
    <message>
        <source>About layers</source>
        <translation>Über Ebenen</translation>
    </message>
</context>
<context>
    <name>history</name>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Every step since the drawing was opened. Click on a line to go back, or forward again, to that moment.</source>
        <translation>Jeder Schritt, seit die Zeichnung geöffnet wurde. Ein Klick auf eine Zeile führt dorthin zurück oder wieder vor.</translation>
    </message>
    <message>
        <source>About the history</source>
        <translation>Über den Verlauf</translation>
    </message>
</context>
<context>
    <name>zoomLevel</name>
    <message>
        <source>Magnification</source>
        <translation>Vergrößerung</translation>
    </message>
    <message>
        <source>Ctrl+Wheel</source>
        <translation>Strg+Mausrad</translation>
    </message>
    <message>
        <source>The drawing is shown at &lt;b&gt;%(zoom)s&lt;/b&gt; of its size.</source>
        <translation>Die Zeichnung ist in &lt;b&gt;%(zoom)s&lt;/b&gt; ihrer Größe zu sehen.</translation>
    </message>
</context>
<context>
    <name>settings</name>
    <message>
        <source>Popup settings</source>
        <translation>Einstellungen der Hinweise</translation>
    </message>
    <message>
        <source>How these popups come and go: their language, how long they stay, when they show and what their links may open.</source>
        <translation>Wie diese Hinweise kommen und gehen: in welcher Sprache, wie lange, wann, und was ihre Verweise öffnen dürfen.</translation>
    </message>
    <message>
        <source>Each change counts from the next popup on.</source>
        <translation>Jede Änderung gilt vom nächsten Hinweis an.</translation>
    </message>
</context>
<context>
    <name>generic</name>
    <message>
        <source>There is no help for this control. Rest the mouse on a tool or on a panel, or read the guide.</source>
        <translation>Zu diesem Bedienelement gibt es keine Hilfe. Zeigen Sie auf ein Werkzeug oder auf die Leiste rechts, oder lesen Sie die Anleitung.</translation>
    </message>
    <message>
        <source>About the tools</source>
        <translation>Über die Werkzeuge</translation>
    </message>
</context>
</TS>
