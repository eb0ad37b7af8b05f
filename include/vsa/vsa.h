// The whole public interface: the entry points, the library's own scene, node types, and the log.
//
//   #include <vsa/vsa.h>
//
//   zn::korvo_sdk::Scene scene;
//   const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open("scene.vsa"), false);
//
// A host with its own scene needs only <vsa/parse.h>.
#pragma once

#include <vsa/diagnostics/diagnostic.h>
#include <vsa/foundation/decompress.h>
#include <vsa/foundation/file.h>
#include <vsa/foundation/log.h>
#include <vsa/foundation/string_vector.h>
#include <vsa/foundation/tuple_parse.h>
#include <vsa/model/scene.h>
#include <vsa/parse.h>
#include <vsa/scene/file_version.h>
#include <vsa/scene/name_update.h>
#include <vsa/scene/node_type.h>
