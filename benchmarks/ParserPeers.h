// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

/*!
 * Other parsers, each used in its usual way, that search for the element "hovlet" with a key.
 *
 * They parse \a text, which they may modify, and stop at the first hit. An element without a key
 * has the empty one.
 */
using FindEntry = bool (*)(std::string_view text, const std::string &key);

bool findWithPugixml(std::string_view text, const std::string &key);
bool findWithLibxml2(std::string_view text, const std::string &key);
bool findWithExpat(std::string_view text, const std::string &key);
bool findWithQXmlStreamReader(std::string_view text, const std::string &key);
