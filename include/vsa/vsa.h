// Includes the whole public API for C++. <vsa/vsa_c.h> is the API for C.
//
//   #include <vsa/vsa.h>
//
// Namespace vsa is for programs that read and change scenes. The functions that read a text into a
// scene do not throw or print. A vsa::Scene owns a scene. vsa::NodeView and vsa::InputView give
// access to its contents. If a node or an input does not exist, their functions return empty
// results, so a program need not check each look-up. vsa::Scene, vsa::Node and vsa::Input change
// the scene.
//
//   const vsa::ReadResult result = vsa::readFile("scene.vsa");
//   const double power = result.scene["sun"]["power"].real(1.0);
//
// Namespace zn contains the plain interface. It is for programs that implement their own scene (see
// <vsa/scene/scene_interface.h>), and for programs that call the entry points of the reader
// directly. Such a program needs only <vsa/parse.h> and, for the library's scene,
// <vsa/model/scene.h>.
//
//   zn::korvo_sdk::Scene scene;
//   const bool read = zn::korvo_sdk::impl::parseVsa(&scene, zn::File::open("scene.vsa"), false);
#pragma once

#include <vsa/back_links.h>
#include <vsa/edit.h>
#include <vsa/edit_status.h>
#include <vsa/file_replacement.h>
#include <vsa/host_scene.h>
#include <vsa/outline.h>
#include <vsa/read.h>
#include <vsa/scene.h>
#include <vsa/syntax.h>
#include <vsa/text_parameter.h>
#include <vsa/text_rules.h>
#include <vsa/types.h>
#include <vsa/values/buffer_view.h>
#include <vsa/values/value.h>
#include <vsa/values/value_types.h>
#include <vsa/view.h>
#include <vsa/write.h>
#include <vsa/write_options.h>

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
