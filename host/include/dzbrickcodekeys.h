// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The keys of the map in which a brick that writes text for a renderer tells it, when a script or
/// a program that does not know the brick's class asks for it by name.
namespace DzBrickCodeKeys {

/// Texts: the sections, and both as a reader sees them.
const char* const materialText = "materialText";
const char* const meshText = "meshText";
const char* const exportText = "exportText";

/// Lists of maps, each with `brick`.
const char* const placeholders = "placeholders"; ///< with `name` and `property`
/// Mapped properties whose map the text does not carry, with `property`.
const char* const unwrittenMaps = "unwrittenMaps";
/// Image files that the text names, with `property` and `file`, the place where each is looked for.
const char* const imageFiles = "imageFiles";
const char* const statements = "statements"; ///< with `begin` and `length` in the export text

/// Members of the maps in the lists.
const char* const brick = "brick";
const char* const property = "property";
const char* const name = "name";
const char* const file = "file";
const char* const begin = "begin";
const char* const length = "length";

} // namespace DzBrickCodeKeys
