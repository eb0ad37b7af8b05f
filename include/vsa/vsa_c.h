/* The reader for C, and for languages that can call C functions. A program reads a text, queries
 * how the reading ended, and reads the nodes and inputs of the scene.
 *
 *   vsa_reading* reading = vsa_read_file("scene.vsa", NULL);
 *   const vsa_node* sun = vsa_find_node(reading, "sun");
 *   double power;
 *
 *   if (vsa_real(vsa_find_input(sun, "power"), &power)) {
 *     printf("power: %g\n", power);
 *   }
 *   vsa_free(reading);
 *
 * Handles are opaque pointers. A null handle represents something that does not exist: functions
 * return it also for an index that is too large and for an unknown name. Every function accepts a
 * null handle and then returns null, 0 or an empty text. There are four exceptions, described
 * below: vsa_reading_status, vsa_reading_message, vsa_load_buffer and vsa_load_buffer_from_text. A
 * null pointer as a name is the empty name. If a pointer for a result is null, the result is not
 * stored. No function throws a C++ exception.
 *
 * A reading owns everything that functions return about it. These objects do not change, and are
 * valid until vsa_free. Several threads may read texts at the same time, and may use the same
 * reading. */
#ifndef VSA_VSA_C_H
#define VSA_VSA_C_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define VSA_C_API __attribute__((visibility("default")))
#else
#define VSA_C_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* A reading: its result, its scene, and what was found in the text. */
typedef struct vsa_reading vsa_reading;
/* A node of a scene. */
typedef struct vsa_node vsa_node;
/* An input of a node, an element of an array or a member of an object. */
typedef struct vsa_input vsa_input;

/* Characters. No NUL follows them, except as the functions below say. `data` is never null. */
typedef struct vsa_text {
  const char* data;
  size_t length;
} vsa_text;

/* --- reading --- */

/* How a reading ended. */
typedef enum vsa_status {
  VSA_COMPLETE,         /* the whole text was read and its links were resolved */
  VSA_STOPPED_BY_ERROR, /* an error in the text ended the reading; what was applied before stays */
  VSA_CUT_OFF,    /* the text ends at a byte 0xFF, or inside a statement, a string or a list */
  VSA_UNREADABLE, /* the file could not be opened or read to its end; the path or text is null; or
                   * the buffer to load is not at its position */
  VSA_CANCELLED,  /* the progress function returned 0 */
  /* The text exceeds a limit; see vsa_reading_limit. The reading has ended there, except if the
   * limit is one of memory and only buffers are too large: these stay empty, the rest is read. */
  VSA_OVER_LIMIT,
  VSA_OUT_OF_MEMORY,  /* memory ran out, or the progress function threw std::bad_alloc */
  VSA_HOST_EXCEPTION, /* the progress function threw a C++ exception other than std::bad_alloc */
  VSA_WRONG_USE       /* nothing was read: the options were not initialised by vsa_options_init, or
                       * vsa_load_buffer or vsa_load_buffer_from_text got a null reading or an
                       * index that is too large */
} vsa_status;

/* The limits that a text can exceed. Members of vsa_options set them. There are two exceptions:
 * VSA_LIMIT_EMPTY_ELEMENTS is a fixed limit, and VSA_LIMIT_DEPTH is never above 256. */
typedef enum vsa_limit {
  VSA_NO_LIMIT,
  VSA_LIMIT_TEXT_BYTES,
  VSA_LIMIT_MEMORY,
  VSA_LIMIT_BUFFER_BYTES,
  VSA_LIMIT_NODES,
  VSA_LIMIT_ELEMENTS,
  VSA_LIMIT_EMPTY_ELEMENTS, /* empty elements of arrays; this limit is always 524288 */
  VSA_LIMIT_DEPTH,
  VSA_LIMIT_DIAGNOSTICS
} vsa_limit;

/* The progress of a reading. */
typedef struct vsa_progress {
  uint64_t bytes_read;     /* bytes of the text that the reader has received */
  uint64_t bytes_total;    /* bytes of the text; VSA_UNLIMITED if it is 0 or not known; equal to
                            * bytes_read in the last call of a complete reading */
  uint64_t links_resolved; /* links that were resolved; 0 until the whole text has been read */
  uint64_t links_total;    /* links of the text; 0 until the whole text has been read */
} vsa_progress;

/* The value of a limit that is never exceeded. There are three exceptions: in `memory_bytes` it
 * means the default limit, in `depth` it means 256, and in `bytes_total` it means that the size of
 * the text is 0 or not known. */
#define VSA_UNLIMITED UINT64_MAX

/* The options of one reading. Call vsa_options_init first, and then change members. */
typedef struct vsa_options {
  size_t size; /* bytes of this struct, set by vsa_options_init */

  /* The largest numbers that are allowed. A limit of 0 allows nothing. The defaults are
   * VSA_UNLIMITED. */
  uint64_t text_bytes;   /* bytes of the text */
  uint64_t memory_bytes; /* bytes of memory; VSA_UNLIMITED means 64 MiB, plus 100 bytes for each
                          * byte of the text, plus what its compressed buffers may expand to */
  uint64_t buffer_bytes; /* bytes of the elements of one buffer */
  uint64_t nodes;        /* nodes that the text creates */
  uint64_t elements;     /* array elements that the text creates */
  uint64_t depth;        /* inputs on one path; a limit above 256 means 256 */
  uint64_t diagnostics;  /* diagnostics that are found, kept or not */

  /* The diagnostic that ends the reading is kept even if it exceeds the next two numbers. */
  uint64_t kept_diagnostics;      /* the maximum number of kept diagnostics: 10000 by default */
  uint64_t kept_diagnostic_bytes; /* the maximum bytes of kept diagnostics: 64 MiB by default */
  int keep_header;   /* if 0, a text without a version has version 1; otherwise version 0 */
  int skips_buffers; /* if not 0, buffers are not converted and stay empty: see vsa_load_buffer */

  /* The names and the types of the nodes to keep, each with a NUL at its end. They must exist
   * until the reading function returns. A node is kept if its name or its type is in the lists. The
   * statements of all other nodes are only checked. There is one exception: if both lists are
   * empty, all nodes are kept. */
  const char* const* wanted_names;
  size_t wanted_name_count;
  const char* const* wanted_types;
  size_t wanted_type_count;

  /* Called with `progress_data` and the progress of the reading, which is valid during the call.
   * The first call is before the text is read, unless the reading ends before that. Further calls
   * follow at least 5 milliseconds after one another. A complete reading makes one last call, which
   * may follow sooner, and whose result is ignored. For all other calls, a result of 0 ends the
   * reading. A null function is not called. */
  int (*progress)(void* progress_data, const vsa_progress* progress);
  void* progress_data;
} vsa_options;

/* Sets all options to their defaults. Does nothing if `options` is null. */
VSA_C_API void vsa_options_init(vsa_options* options);

/* Reads the file at `path`, or the `length` bytes at `text`. A byte order mark is skipped in a
 * file, but not at `text`: there, its bytes are letters of the first word. If `options` is null,
 * the defaults apply. If `path` or `text` is null, the status is VSA_UNREADABLE. Returns a reading,
 * which the caller frees with vsa_free. Returns null only if there is no memory for a reading. */
VSA_C_API vsa_reading* vsa_read_file(const char* path, const vsa_options* options);
VSA_C_API vsa_reading* vsa_read_text(const char* text, size_t length, const vsa_options* options);
/* Frees the reading, its scene and everything that functions have returned about it. Does nothing
 * if `reading` is null. */
VSA_C_API void vsa_free(vsa_reading* reading);

/* Returns how the reading ended. For a null reading the result is VSA_OUT_OF_MEMORY. */
VSA_C_API vsa_status vsa_reading_status(const vsa_reading* reading);
/* Returns the name of a status, such as "complete" or "stopped-by-error". Returns "unknown" for a
 * number that is no status. */
VSA_C_API const char* vsa_status_name(vsa_status status);
/* Returns the reason why the reading ended, as a message for people. It is empty if the status is
 * VSA_COMPLETE, and if there is no memory for it. For a null reading it is "out of memory". */
VSA_C_API vsa_text vsa_reading_message(const vsa_reading* reading);
/* Returns the limit that the text exceeded, or VSA_NO_LIMIT if it exceeded none. */
VSA_C_API vsa_limit vsa_reading_limit(const vsa_reading* reading);
/* Returns the name of a limit, such as "none" or "text-bytes". Returns "unknown" for a number that
 * is no limit. */
VSA_C_API const char* vsa_limit_name(vsa_limit limit);

/* The counts of a reading. */
typedef struct vsa_counts {
  uint64_t bytes_read; /* bytes of the text that were read, including the parser's lookahead */
  uint64_t statements; /* statements and comments that the parser began */
  uint64_t nodes;      /* nodes that were created, kept or not */
  uint64_t elements;   /* array elements that were created, or whose creation failed */
  uint64_t values;     /* values that were assigned to inputs of kept nodes */
  uint64_t links;      /* references and connections that were resolved, with and without success;
                        * 0 if the reading ended before that */
  uint64_t errors;     /* errors that were found, kept or not */
  uint64_t warnings;   /* warnings that were found, kept or not */
} vsa_counts;

/* Fills `out` and returns 1. For a null reading, returns 0 and does not change `out`. */
VSA_C_API int vsa_reading_counts(const vsa_reading* reading, vsa_counts* out);

/* A place in the text. The offset counts bytes from 0. The line counts from 1. The column counts
 * bytes from 1. A byte order mark at the beginning of a file is not part of the text. */
typedef struct vsa_position {
  uint64_t offset, line, column;
} vsa_position;

/* A problem in the text. */
typedef struct vsa_diagnostic {
  const char* id;    /* the stable name, such as "too-few-elements" */
  int is_error;      /* not 0 for an error, 0 for a warning */
  int ended_reading; /* not 0 if the problem ended the reading */
  vsa_text message;
  vsa_text input_path; /* the path of the input, such as "worktop.points[3]"; may be empty */
  vsa_position begin;  /* the position of the first byte of the invalid text */
  vsa_position end;    /* the position after its last byte; equal to `begin` if a part is missing */
} vsa_diagnostic;

/* Return the number of diagnostics that were kept, and the number of all that were found. */
VSA_C_API size_t vsa_diagnostic_count(const vsa_reading* reading);
VSA_C_API uint64_t vsa_diagnostics_found(const vsa_reading* reading);
/* Fills `out` and returns 1. If `index` is not less than the number of kept diagnostics, returns 0
 * and does not change `out`. */
VSA_C_API int vsa_diagnostic_at(const vsa_reading* reading, size_t index, vsa_diagnostic* out);
/* The values that the message of a diagnostic contains, in the order of the message.
 * docs/messages.md lists them for each id. If there is no such diagnostic, the count is 0. If there
 * is no such argument, the text is empty. */
VSA_C_API size_t vsa_diagnostic_argument_count(const vsa_reading* reading, size_t index);
VSA_C_API vsa_text vsa_diagnostic_argument(const vsa_reading* reading, size_t index,
                                           size_t argument);

/* --- buffers that are read later --- */

/* A buffer literal that was not converted, because `skips_buffers` was set. */
typedef struct vsa_skipped_buffer {
  vsa_text input_path;      /* the path of its input, such as "worktop.points" */
  const char* element_type; /* the type of one element, such as "Vec3f" */
  uint64_t count;           /* the number of elements that the text declares */
  vsa_position begin;       /* the position of the first byte of the literal */
  vsa_position end;         /* the position after its last byte */
} vsa_skipped_buffer;

/* vsa_skipped_count returns the number of skipped buffers. vsa_skipped_at fills `out` with one of
 * them, in the order of the text, and returns 1. If `index` is not less than the number, it returns
 * 0 and does not change `out`. */
VSA_C_API size_t vsa_skipped_count(const vsa_reading* reading);
VSA_C_API int vsa_skipped_at(const vsa_reading* reading, size_t index, vsa_skipped_buffer* out);

/* Reads one skipped buffer of the reading `skipped`, from the same file or the same text. Returns a
 * new reading, as vsa_read_file does. Call vsa_loaded_buffer to get its buffer. The status is
 * VSA_WRONG_USE if `skipped` is null, or if `index` is not less than the number of skipped buffers.
 * It is VSA_UNREADABLE if the file or text does not contain a literal of the same type and count at
 * this position. */
VSA_C_API vsa_reading* vsa_load_buffer(const char* path, const vsa_reading* skipped, size_t index,
                                       const vsa_options* options);
VSA_C_API vsa_reading* vsa_load_buffer_from_text(const char* text, size_t length,
                                                 const vsa_reading* skipped, size_t index,
                                                 const vsa_options* options);

/* --- the scene --- */

/* The header of the file. If the text does not contain a version, the version is 1. It is 0 instead
 * if `keep_header` was set, and if nothing was read. */
VSA_C_API uint64_t vsa_file_version(const vsa_reading* reading);
VSA_C_API vsa_text vsa_file_time(const vsa_reading* reading);
VSA_C_API size_t vsa_comment_count(const vsa_reading* reading);
VSA_C_API vsa_text vsa_comment_at(const vsa_reading* reading, size_t index);

/* The nodes in the order of their creation, without removed ones. vsa_first_node returns the first
 * node. vsa_next_node returns the node after `node`. Both return null at the end. */
VSA_C_API const vsa_node* vsa_first_node(const vsa_reading* reading);
VSA_C_API const vsa_node* vsa_next_node(const vsa_node* node);
/* Returns the node with this name, or null. `name` ends in a NUL. */
VSA_C_API const vsa_node* vsa_find_node(const vsa_reading* reading, const char* name);
/* The name of a node, and the name of its type. */
VSA_C_API vsa_text vsa_node_name(const vsa_node* node);
VSA_C_API vsa_text vsa_node_type(const vsa_node* node);

/* The inputs of a node, in the order of their creation. */
VSA_C_API size_t vsa_input_count(const vsa_node* node);
VSA_C_API const vsa_input* vsa_input_at(const vsa_node* node, size_t index);
VSA_C_API const vsa_input* vsa_find_input(const vsa_node* node, const char* name);
/* The elements of an array, by index. */
VSA_C_API size_t vsa_element_count(const vsa_input* array);
VSA_C_API const vsa_input* vsa_element_at(const vsa_input* array, size_t index);
/* The members of an object, in the order of their creation. */
VSA_C_API size_t vsa_member_count(const vsa_input* object);
VSA_C_API const vsa_input* vsa_member_at(const vsa_input* object, size_t index);
VSA_C_API const vsa_input* vsa_find_member(const vsa_input* object, const char* name);

/* Returns the name of an input or a member. It is empty for an element of an array. */
VSA_C_API vsa_text vsa_input_name(const vsa_input* input);
/* Writes the path of an input, such as "rig.bones[2].at", and a NUL into the `capacity` bytes at
 * `out`. A path that is too long is cut off. Writes nothing if `capacity` is 0. Returns the length
 * of the whole path without the NUL. If memory runs out, the path is empty and the result 0. */
VSA_C_API size_t vsa_input_path(const vsa_input* input, char* out, size_t capacity);

/* The type of the value of an input. The numbers do not change in later versions. */
typedef enum vsa_type {
  VSA_NULL,
  VSA_BOOL,
  VSA_INT,
  VSA_UINT,
  VSA_REAL,
  VSA_VEC2,
  VSA_VEC3,
  VSA_VEC4,
  VSA_POS2,
  VSA_POS3,
  VSA_QUAT,
  VSA_RGBA,
  VSA_MAT3,
  VSA_MAT4,
  VSA_STRING,
  VSA_NODE,
  VSA_BUFFER,
  VSA_ARRAY,
  VSA_OBJECT
} vsa_type;

/* Returns the type of the value. It is VSA_NULL for a missing input and for an input without a
 * value. */
VSA_C_API vsa_type vsa_input_type(const vsa_input* input);
/* Returns the name of a type, such as "Null" or "Bool". Returns "<unknown>" for a number that is no
 * type. */
VSA_C_API const char* vsa_type_name(vsa_type type);

/* The value of an input. If the value has the type of the function, the function stores it in `out`
 * and returns 1. Otherwise it returns 0 and does not change `out`. vsa_int also accepts a UInt less
 * than 2^63. vsa_uint also accepts an Int that is not negative. vsa_real also accepts every Int and
 * UInt, rounded to the nearest double. */
VSA_C_API int vsa_bool(const vsa_input* input, int* out);
VSA_C_API int vsa_int(const vsa_input* input, int64_t* out);
VSA_C_API int vsa_uint(const vsa_input* input, uint64_t* out);
VSA_C_API int vsa_real(const vsa_input* input, double* out);
/* Stores the characters of a String in the same way. A NUL follows the last one. */
VSA_C_API int vsa_string(const vsa_input* input, vsa_text* out);
/* Stores a pointer to the numbers of a vector, position, quaternion, colour or matrix. Returns how
 * many numbers there are: 2 to 16. For any other input, returns 0 and does not change `out`. */
VSA_C_API size_t vsa_components(const vsa_input* input, const double** out);
/* Returns the node that the input refers to, or null. */
VSA_C_API const vsa_node* vsa_reference(const vsa_input* input);
/* Returns the node that the input is connected to, and stores the name of its output in `output`.
 * If there is no connection, returns null and does not change `output`. */
VSA_C_API const vsa_node* vsa_connection(const vsa_input* input, vsa_text* output);

/* A buffer. Its elements are contiguous in memory, and each has `components` numbers. */
typedef struct vsa_buffer {
  const void* data;           /* null for a count of 0 */
  uint64_t count;             /* the number of elements */
  uint64_t bytes;             /* the bytes of all elements */
  const char* element_type;   /* the type of one element, such as "Vec3f" */
  const char* component_type; /* the type of one number, such as "Float" */
  size_t components;          /* how many numbers one element has */
  size_t component_bytes;     /* the bytes of one number */
} vsa_buffer;

/* Fills `out` with the buffer of an input and returns 1. If the input has no buffer, returns 0 and
 * does not change `out`. */
VSA_C_API int vsa_buffer_of(const vsa_input* input, vsa_buffer* out);
/* Fills `out` with the buffer that vsa_load_buffer or vsa_load_buffer_from_text has read, and
 * returns 1. If its status is not VSA_COMPLETE, and for any other reading, returns 0 and does not
 * change `out`. */
VSA_C_API int vsa_loaded_buffer(const vsa_reading* loaded, vsa_buffer* out);

#ifdef __cplusplus
}
#endif

#endif
