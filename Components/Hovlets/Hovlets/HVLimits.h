// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/qglobal.h>

namespace Hovlets {

/*!
 * \brief The most that content may cost the process: memory, stack and time.
 *
 * The library lives in the host's process, so a control file or a clip that was damaged, generated
 * or made to do harm must not take the host down. What meets a limit is left out, with one message,
 * and everything else is still served. The defaults are far above what people write and watch; a
 * host changes them only where its content is known to need more, or its machine holds less.
 *
 * The limits are shared by the whole process, since memory is: set them once, before the first
 * Hovlets::HVInterface is created.
 *
 * \code
 * Hovlets::HVLimits limits;
 * limits.clipMemory = 128 * 1024 * 1024;
 * Hovlets::HVLimits::setCurrent(limits);
 * \endcode
 *
 * A limit of 0 or less admits nothing. No value means "unlimited", but the largest number of
 * the type comes close. Do not use limits to tune appearance: HVContext has settings for that.
 */
struct HOVLETS_EXPORT HVLimits
{
    // Control files

    /*!
     * Levels of nested elements in a control file. Deeper nesting ends the parse with a "Fatal
     * error at" line in Qt's debug output; the file then serves nothing. The XML reader recurses
     * once per level: about 1,100 levels overflow a stack of 512 KB.
     */
    int nestingDepth = 512;

    /*!
     * Parentheses open at a time in the content models of a document type declaration. More end the
     * parse as above. The XML reader recurses once per parenthesis.
     */
    int contentModelDepth = 256;

    /*!
     * Characters that the parse of one control file may deliver after expanding entities. More end
     * the parse as above. 154 KB of repeated entities have been seen to expand to 200 million
     * characters.
     */
    qint64 parsedCharacters = qint64 { 64 } * 1024 * 1024;

    /*!
     * References that one control file may make to entities which it declares, those inside of
     * other entities counted as often as they are expanded. More end the parse as above.
     */
    int entityReferences = 65536;

    /*!
     * Elements that the parse of one control file may build: those of one entry, as a rule. More
     * end the parse as above. Each takes about 500 bytes.
     */
    int builtElements = 50000;

    /*!
     * Characters that the entities of one control file may add to it. The value of an entity counts
     * once for its declaration and once for each reference to it; declaring many large entities
     * counts more, since the reader searches each of them for the names of all others. More end the
     * parse as above.
     */
    qint64 entityCharacters = qint64 { 1024 } * 1024;

    /// Bytes of one control file. A larger file is skipped as if it were unreadable.
    qint64 controlFileSize = qint64 { 64 } * 1024 * 1024;

    /// Bytes of one translation file. A larger file is skipped: texts stay as they are written.
    qint64 translationFileSize = qint64 { 16 } * 1024 * 1024;

    // What a popup shows of one entry

    // A popup is laid out as a whole before its first frame, on the GUI thread: what these admit
    // takes up to 100 ms. Where a popup is cut it ends with "…", and the host gets one warning.

    /// Elements, and tags in texts: paragraphs, links, pictures, emphasised words. Those that
    /// follow are left out.
    int shownElements = 300;

    /// Characters of text. The text is cut off there.
    int shownCharacters = 20000;

    /// Pictures. Those that follow are replaced by their alternative text.
    int shownPictures = 20;

    // Pictures in content

    /// Pixels of one picture or of one frame of a clip (256 MB in memory). A larger picture counts
    /// as missing; a clip ends before a larger frame.
    qint64 picturePixels = qint64 { 8192 } * 8192;

    /*!
     * Bytes of one picture at its full size, width x height x 4, and of its file. Pictures are
     * decoded one at a time. A larger one counts as missing. What popups show at a time, scaled
     * down to its place, may together take as much again; a picture that does not fit stays blank.
     */
    qint64 pictureMemory = qint64 { 128 } * 1024 * 1024;

    // Clips

    /// Streams of a clip file. A file with more cannot be opened: each stream costs memory before
    /// anything is known of it.
    int clipStreams = 64;

    /// Bytes that are read of a clip file to find its streams. Streams that begin later are not
    /// found.
    qint64 clipProbeSize = 5000000;

    /// Milliseconds that opening a clip may take. A clip that takes longer cannot be opened.
    int clipProbeTime = 10000;

    /*!
     * Bytes by which the process may grow while a clip is opened. A clip at which it grows by more
     * cannot be opened. 2 MB of empty tracks have been seen to take 2 GB. Systems other than Linux
     * do not say how much a process uses: there, this limit has no effect.
     */
    qint64 clipProbeMemory = qint64 { 256 } * 1024 * 1024;

    /*!
     * Samples that the tables of a QuickTime or MP4 clip may declare, over all tracks. A clip with
     * more cannot be opened: each takes 24 bytes and more before the first is read.
     */
    qint64 clipSamples = 4000000;

    /*!
     * Bytes of the decoded frames of all clips together. Clips are decoded into memory whole, width
     * x height x 4 bytes per frame. A clip ends before the frame that does not fit.
     */
    qint64 clipMemory = qint64 { 512 } * 1024 * 1024;

    /// Unused. Room for further limits, which keeps the size of the struct.
    qint64 reserved[4] = {};

    /// The limits that apply now. Any thread may ask.
    [[nodiscard]] static HVLimits current();

    /*!
     * Replaces the limits. Any thread may call it; work that has begun may finish under the earlier
     * limits.
     */
    static void setCurrent(const HVLimits &limits);
};

} // namespace Hovlets
