// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/qglobal.h>

namespace Hovlets {

/*!
 * \brief The most that content may cost the process: memory, stack and time.
 *
 * The library runs in the host's process, so a damaged, generated or malicious control file,
 * picture or clip must not bring the host down. Content that meets a limit is omitted, usually with
 * a warning to the host or a line in Qt's debug output; everything else is still served. The
 * defaults are far above what people write and watch. Change them only if your content needs more,
 * or if your machines have less memory.
 *
 * The limits apply to the whole process, because memory does: set them once, before you create the
 * first Hovlets::HVInterface.
 *
 * \code
 * Hovlets::HVLimits limits;
 * limits.clipMemory = 128 * 1024 * 1024;
 * Hovlets::HVLimits::setCurrent(limits);
 * \endcode
 *
 * A limit of 0 or less admits nothing. No value means "unlimited"; the largest number of the type
 * comes close. Do not use limits to adjust the appearance: HVContext has settings for that.
 */
struct HOVLETS_EXPORT HVLimits
{
    // Control files

    /*!
     * Levels of nested elements in a control file. Deeper nesting ends the parse with a "Fatal
     * error at" line in Qt's debug output and a warning to the host; none of its entries is found.
     * The XML reader recurses once per level: about 1,100 levels overflow a stack of 512 KB.
     */
    int nestingDepth = 512;

    /*!
     * Nested parentheses in the content models of a document type declaration. More end the parse
     * as above. The XML reader recurses once per parenthesis.
     */
    int contentModelDepth = 256;

    /*!
     * Characters that the parse of one control file may deliver after expanding entities. More end
     * the parse as above. A file of 154 KB with repeated entities can expand to 200 million
     * characters.
     */
    qint64 parsedCharacters = qint64 { 64 } * 1024 * 1024;

    /*!
     * References in one control file to entities that it declares. References inside entities count
     * each time that they are expanded. More end the parse as above.
     */
    int entityReferences = 65536;

    /*!
     * Elements that one parse of a control file may build, usually those of one entry. More end the
     * parse as above, as do more attributes than this in one element. Each takes about 500 bytes.
     */
    int builtElements = 15000;

    /*!
     * Characters that the entities of one control file may add to it. The value of an entity counts
     * once for its declaration and once for each reference to it. Declaring many large entities
     * counts more, because the reader searches each of them for the names of all others. More end
     * the parse as above.
     */
    qint64 entityCharacters = qint64 { 1024 } * 1024;

    /// Bytes of one control file or key-data file. A larger file is skipped with a warning.
    qint64 controlFileSize = qint64 { 64 } * 1024 * 1024;

    /// Bytes of one translation file. A larger file is skipped with a warning; texts then appear
    /// untranslated.
    qint64 translationFileSize = qint64 { 16 } * 1024 * 1024;

    // What a popup shows of one entry

    // The GUI thread lays out the whole popup before its first frame. Within these limits, that
    // takes up to 100 ms, and up to 200 ms when thousands of different characters that no installed
    // font has are shown for the first time. If content is cut, the popup ends with "…", and the
    // host gets one warning.

    /// Elements, and tags in texts: paragraphs, links, pictures, emphasised words. Cells after the
    /// first 20 of a row count four times; notes, warnings and code twice. Further ones are
    /// omitted.
    int shownElements = 300;

    /*!
     * Characters of text. The text is cut off there. A directional control, such as U+202B, counts
     * ten times, a letter in another script or direction than the one before eight times, a Hangul
     * syllable twice, and a character whose style sets a size above 24 points or pixels four times.
     * A letter keeps only its first 30 combining marks.
     *
     * Four times as many characters are read, in all texts and translations of the entry together:
     * those of the text, its markup and its placeholders. The text is also cut off there, and a
     * translation for QML, too.
     */
    int shownCharacters = 20000;

    /// Pictures. Further ones are replaced by their alternative text. Files that exist but cannot
    /// be shown count, too.
    int shownPictures = 20;

    // Pictures in content

    /// Pixels of one picture or one frame of a clip (by default 256 MB in memory). A larger picture
    /// counts as missing; a clip ends before a larger frame. clipDecoderMemory limits frames
    /// further.
    qint64 picturePixels = qint64 { 8192 } * 8192;

    /*!
     * Bytes that decoding one picture at its full size takes, and also those of its file. A larger
     * one counts as missing. Most pictures take width x height x 4; progressive JPEG, PNG with 16
     * bits per channel, and lossless or animated WebP take up to three times as much. Pictures are
     * decoded one at a time. All decoded pictures in popups, scaled down to their size on screen,
     * may together take as much again; one that does not fit counts as damaged.
     */
    qint64 pictureMemory = qint64 { 128 } * 1024 * 1024;

    // Clips

    /// Streams of a clip file. A file with more cannot be opened: each stream takes memory before
    /// its content is known.
    int clipStreams = 64;

    /// Bytes of a clip file that are read to find its streams, at least 32. Streams that begin
    /// later are not found.
    qint64 clipProbeSize = 5000000;

    /// Milliseconds that opening a clip may take. A clip that takes longer cannot be opened.
    int clipProbeTime = 10000;

    /*!
     * Bytes by which the process may grow while a clip is opened. If it grows by more, the clip
     * cannot be opened. A file of 2 MB with empty tracks can take 2 GB. Has an effect only on
     * Linux, where the memory of the process can be read.
     */
    qint64 clipProbeMemory = qint64 { 160 } * 1024 * 1024;

    /*!
     * Samples that the tables of a QuickTime or MP4 clip may declare in all tracks together. A clip
     * with more cannot be opened: each takes at least 24 bytes before the first one is read.
     */
    qint64 clipSamples = 4000000;

    /*!
     * Bytes of the decoded frames of all clips together. Whole clips are decoded into memory, width
     * x height x 4 bytes per frame, and 512 bytes for each frame whatever its size. If a frame does
     * not fit, clips that are neither decoding nor playing lose their frames, and are decoded again
     * when they are needed. If that is not enough, the clip ends before the frame.
     */
    qint64 clipMemory = qint64 { 512 } * 1024 * 1024;

    // Control files, continued: new fields come last

    /*!
     * Bytes of one control file that are parsed for one look-up. For most files, these are the
     * entry and the text around the entries, because all other entries are omitted. A file with a
     * document type declaration, in an encoding other than UTF-8, or with names that have prefixes
     * or letters beyond ASCII, is parsed as a whole. So is the key-data file. A file with more
     * bytes to parse is skipped with a warning. The parser needs about 50 ms for 2 MB of text, and
     * up to 200 ms for 2 MB of references such as "&lt;".
     */
    qint64 parsedSize = qint64 { 2 } * 1024 * 1024;

    /*!
     * Bytes of the frames that the decoder of one clip may hold. Besides the frame that it decodes,
     * it holds those that the next ones refer to (the clip selects up to 16) and those of its other
     * threads; it uses fewer threads for large frames. The clip ends before the frame that does not
     * fit, with a line in Qt's debug output. By default, 8 frames of a usual clip in 4K fit.
     * Clips whose frames are so large that fewer than three fit are decoded one at a time.
     *
     * The memory of decoders in external libraries, such as those for AV1, cannot be counted. They
     * decode no frame with more pixels than a twelfth of this number (by default 4096 x 2160),
     * because a frame and one reference take up to 12 bytes per pixel. Neither is a larger frame
     * decoded while a clip is opened, so it opens only if the container stores its size.
     */
    qint64 clipDecoderMemory = qint64 { 104 } * 1024 * 1024;

    /// Unused. Reserves space for further limits, which keeps the size of the struct.
    qint64 reserved[2] = {};

    /// The current limits. Any thread may call it.
    [[nodiscard]] static HVLimits current();

    /*!
     * Replaces the limits. Any thread may call it. Work that has started may finish under the
     * previous limits.
     */
    static void setCurrent(const HVLimits &limits);
};

} // namespace Hovlets
