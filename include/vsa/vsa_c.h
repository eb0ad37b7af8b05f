/* The reader for C, and for languages that call C functions: read a text, query how the reading
 * ended, and look at the nodes and inputs of the scene.
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
 * Handles are opaque pointers. A null handle stands for something that is missing. Every function
 * accepts it, and returns null, 0 or an empty text for it. A null pointer for a name is the empty
 * name, and a null pointer for a result means that the result is not wanted. No function throws a
 * C++ exception.
 *
 * Everything that a function returns belongs to the reading, never changes, and is valid until
 * vsa_free. Any number of threads may read at the same time, and may look at the same reading. */
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

/* A text that was read, its scene, and what was found in it. */
typedef struct vsa_reading vsa_reading;
/* A node of a scene. */
typedef struct vsa_node vsa_node;
/* An input of a node, an element of an array or a member of an object. */
typedef struct vsa_input vsa_input;

/* Characters that need not end in a NUL. `data` is never null. */
typedef struct vsa_text {
  const char* data;
  size_t length;
} vsa_text;

/* --- reading --- */

/* How a reading ended. */
typedef enum vsa_status {
  VSA_COMPLETE,         /* the whole text was read and its links were resolved */
  VSA_STOPPED_BY_ERROR, /* an error of the text ended the reading; what was applied before stays */
  VSA_CUT_OFF,    /* the text ends inside a statement, a string or a list, or at a byte 0xFF */
  VSA_UNREADABLE, /* the file could not be opened or read to its end */
  VSA_CANCELLED,  /* the progress function returned 0 */
  VSA_OVER_LIMIT, /* the text exceeds a limit; see vsa_reading_limit */
  VSA_OUT_OF_MEMORY,
  VSA_HOST_EXCEPTION, /* the progress function threw a C++ exception */
  VSA_WRONG_USE       /* nothing was read: the options were not initialised by vsa_options_init, or
                       * the index given to vsa_load_buffer is too large */
} vsa_status;

/* The limits that can end a reading. Members of vsa_options set all of them but
 * VSA_LIMIT_EMPTY_ELEMENTS. */
typedef enum vsa_limit {
  VSA_NO_LIMIT,
  VSA_LIMIT_TEXT_BYTES,
  VSA_LIMIT_MEMORY,
  VSA_LIMIT_BUFFER_BYTES,
  VSA_LIMIT_NODES,
  VSA_LIMIT_ELEMENTS,
  VSA_LIMIT_EMPTY_ELEMENTS, /* elements that only fill gaps before a higher index: always 524288 */
  VSA_LIMIT_DEPTH,
  VSA_LIMIT_DIAGNOSTICS
} vsa_limit;

/* The state of a reading that has not ended. */
typedef struct vsa_progress {
  uint64_t bytes_read;     /* bytes of the text that the reader has requested */
  uint64_t bytes_total;    /* bytes of the text; VSA_UNLIMITED while its size is not known */
  uint64_t links_resolved; /* links that were resolved; 0 until the whole text has been read */
  uint64_t links_total;    /* links in the text; 0 until the whole text has been read */
} vsa_progress;

/* No limit; for `memory_bytes` the default limit. Also a size of a text that is not known. */
#define VSA_UNLIMITED UINT64_MAX

/* Options of one reading. Call vsa_options_init first, and then change single members. */
typedef struct vsa_options {
  size_t size; /* bytes of this struct, set by vsa_options_init */

  /* The largest numbers that are allowed: a limit of N allows N, and a limit of 0 allows none. The
   * defaults are VSA_UNLIMITED. */
  uint64_t text_bytes;   /* bytes of the text */
  uint64_t memory_bytes; /* bytes of memory; VSA_UNLIMITED means 64 MiB, plus 100 times the text,
                          * plus what its compressed buffers may expand to */
  uint64_t buffer_bytes; /* bytes of the elements of one buffer */
  uint64_t nodes;        /* nodes that the text creates */
  uint64_t elements;     /* array elements that the text creates */
  uint64_t depth;        /* inputs on one path */
  uint64_t diagnostics;  /* problems that are found, kept or not */

  uint64_t kept_diagnostics;      /* diagnostics to keep: 10000 by default. Others are counted */
  uint64_t kept_diagnostic_bytes; /* bytes of the diagnostics to keep: 64 MiB by default */
  int keep_header;   /* the version of a text that states none: 1 if this is 0, and 0 otherwise */
  int skips_buffers; /* if not 0, each buffer gets its type and stays empty: see vsa_load_buffer */

  /* The nodes to keep: those with one of the names or one of the types. If both lists are empty,
   * all nodes are kept. Other nodes are checked and not kept. Each name ends in a NUL. */
  const char* const* wanted_names;
  size_t wanted_name_count;
  const char* const* wanted_types;
  size_t wanted_type_count;

  /* Called with `progress_data` at the beginning, then at most every 5 milliseconds, and at the end
   * of a complete reading. `progress` is valid for the call. Returning 0 ends the reading,
   * except that the result of the last call is ignored. A null function is not called. */
  int (*progress)(void* progress_data, const vsa_progress* progress);
  void* progress_data;
} vsa_options;

/* Sets the defaults. Does nothing with a null pointer. */
VSA_C_API void vsa_options_init(vsa_options* options);

/* Reads the file at `path`, or `length` bytes at `text`. Null options are the defaults. Null paths
 * and texts are unreadable. Always returns a reading, to be freed by vsa_free, except that it
 * returns null if there is no memory for one. */
VSA_C_API vsa_reading* vsa_read_file(const char* path, const vsa_options* options);
VSA_C_API vsa_reading* vsa_read_text(const char* text, size_t length, const vsa_options* options);
/* Frees the reading, its scene and everything that was returned from it. Null is allowed. */
VSA_C_API void vsa_free(vsa_reading* reading);

/* How the reading ended. VSA_OUT_OF_MEMORY for a null reading. */
VSA_C_API vsa_status vsa_reading_status(const vsa_reading* reading);
/* The name of a status: "complete", "stopped-by-error" and so on; "unknown" for a number that is no
 * status. */
VSA_C_API const char* vsa_status_name(vsa_status status);
/* Why the reading ended, as a message for people; empty if it is complete. */
VSA_C_API vsa_text vsa_reading_message(const vsa_reading* reading);
/* The limit that the text exceeds; VSA_NO_LIMIT unless the status is VSA_OVER_LIMIT. */
VSA_C_API vsa_limit vsa_reading_limit(const vsa_reading* reading);
/* The name of a limit: "none", "text-bytes" and so on; "unknown" for a number that is no limit. */
VSA_C_API const char* vsa_limit_name(vsa_limit limit);

/* What a reading read and applied to its scene. */
typedef struct vsa_counts {
  uint64_t bytes_read; /* bytes of the text that were read */
  uint64_t statements; /* statements and comments that the parser began */
  uint64_t nodes;      /* nodes that were created, kept or not */
  uint64_t elements;   /* array elements that were created */
  uint64_t values;     /* values that were assigned to inputs of kept nodes */
  uint64_t links;      /* references and connections that were resolved, `null` included */
  uint64_t errors;     /* errors that were found, kept or not */
  uint64_t warnings;   /* warnings that were found, kept or not */
} vsa_counts;

/* Fills `out` and returns 1; returns 0 and changes nothing for a null reading. */
VSA_C_API int vsa_reading_counts(const vsa_reading* reading, vsa_counts* out);

/* A place in the text. The offset counts bytes from 0, line and column from 1, columns in bytes. */
typedef struct vsa_position {
  uint64_t offset, line, column;
} vsa_position;

/* A problem that was found. */
typedef struct vsa_diagnostic {
  const char* id;    /* the stable name, such as "too-few-elements" */
  int is_error;      /* not 0 for an error, 0 for a warning */
  int ended_reading; /* not 0 if the problem ended the reading */
  vsa_text message;
  vsa_text input_path; /* the input concerned, such as "worktop.points[3]"; may be empty */
  vsa_position begin;  /* the first byte of the invalid text */
  vsa_position end;    /* the byte after the last one */
} vsa_diagnostic;

/* How many diagnostics were kept, and how many were found. */
VSA_C_API size_t vsa_diagnostic_count(const vsa_reading* reading);
VSA_C_API uint64_t vsa_diagnostics_found(const vsa_reading* reading);
/* Fills `out` and returns 1; returns 0 and changes nothing if `index` is not below the count. */
VSA_C_API int vsa_diagnostic_at(const vsa_reading* reading, size_t index, vsa_diagnostic* out);
/* The values that the message of a diagnostic contains, in the order of the message.
 * docs/messages.md names them for each id. The count is 0 if there is no such diagnostic, and the
 * text empty if there is no such argument.
 */
VSA_C_API size_t vsa_diagnostic_argument_count(const vsa_reading* reading, size_t index);
VSA_C_API vsa_text vsa_diagnostic_argument(const vsa_reading* reading, size_t index,
                                           size_t argument);

/* --- buffers that are read later --- */

/* The literal of a buffer that was not converted, because `skips_buffers` was set. */
typedef struct vsa_skipped_buffer {
  vsa_text input_path;      /* the input that it is assigned to, such as "worktop.points" */
  const char* element_type; /* the type of one element, such as "Vec3f" */
  uint64_t count;           /* the number of elements that the text declares */
  vsa_position begin;       /* the first byte of the literal */
  vsa_position end;         /* the byte after the last one */
} vsa_skipped_buffer;

/* The number of skipped buffers, and one of them, in the order of the text. vsa_skipped_at fills
 * `out` and returns 1; it returns 0 and changes nothing if `index` is not below the number. */
VSA_C_API size_t vsa_skipped_count(const vsa_reading* reading);
VSA_C_API int vsa_skipped_at(const vsa_reading* reading, size_t index, vsa_skipped_buffer* out);

/* Reads one skipped buffer of the reading `skipped`, from the same file or the same text. Returns a
 * new reading, as vsa_read_file does: vsa_loaded_buffer has its buffer. The status is VSA_WRONG_USE
 * if `index` is not below the number of skipped buffers, VSA_UNREADABLE if the file or the text has
 * no such literal there. */
VSA_C_API vsa_reading* vsa_load_buffer(const char* path, const vsa_reading* skipped, size_t index,
                                       const vsa_options* options);
VSA_C_API vsa_reading* vsa_load_buffer_from_text(const char* text, size_t length,
                                                 const vsa_reading* skipped, size_t index,
                                                 const vsa_options* options);

/* --- the scene --- */

/* The header of the file. If the text names no version, the version is 1, or 0 if `keep_header` was
 * set. */
VSA_C_API uint64_t vsa_file_version(const vsa_reading* reading);
VSA_C_API vsa_text vsa_file_time(const vsa_reading* reading);
VSA_C_API size_t vsa_comment_count(const vsa_reading* reading);
VSA_C_API vsa_text vsa_comment_at(const vsa_reading* reading, size_t index);

/* The nodes in the order of their creation. vsa_first_node returns the first node, vsa_next_node
 * the node after `node`. Both return null at the end. */
VSA_C_API const vsa_node* vsa_first_node(const vsa_reading* reading);
VSA_C_API const vsa_node* vsa_next_node(const vsa_node* node);
/* The node of that name, which ends in a NUL, or null. */
VSA_C_API const vsa_node* vsa_find_node(const vsa_reading* reading, const char* name);
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

/* The name of an input or a member; empty for an element of an array. */
VSA_C_API vsa_text vsa_input_name(const vsa_input* input);
/* Writes the path, such as "rig.bones[2].at", and a NUL into `capacity` bytes, and cuts off a
 * longer path. Returns the length of the whole path without the NUL; 0 if memory runs out. */
VSA_C_API size_t vsa_input_path(const vsa_input* input, char* out, size_t capacity);

/* The type of an input; the numbers are stable. */
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

/* The type of the value. VSA_NULL for a missing input and for an input without a value. */
VSA_C_API vsa_type vsa_input_type(const vsa_input* input);
/* The name of a type: "Null", "Bool" and so on. */
VSA_C_API const char* vsa_type_name(vsa_type type);

/* The value. Each function fills `out` and returns 1 if the input has a value of its type;
 * otherwise it returns 0 and changes nothing. vsa_int accepts a UInt below 2^63, and vsa_uint an
 * Int of 0 or more. vsa_real accepts every Int and UInt, and rounds it to the nearest double. */
VSA_C_API int vsa_bool(const vsa_input* input, int* out);
VSA_C_API int vsa_int(const vsa_input* input, int64_t* out);
VSA_C_API int vsa_uint(const vsa_input* input, uint64_t* out);
VSA_C_API int vsa_real(const vsa_input* input, double* out);
/* The characters that vsa_string stores in `out` also end in a NUL. */
VSA_C_API int vsa_string(const vsa_input* input, vsa_text* out);
/* Sets `out` to the numbers of a vector, position, quaternion, colour or matrix. Returns how many
 * numbers there are: 2 to 16. For any other input, returns 0 and changes nothing. */
VSA_C_API size_t vsa_components(const vsa_input* input, const double** out);
/* The node that the input refers to, or null. */
VSA_C_API const vsa_node* vsa_reference(const vsa_input* input);
/* The node that the input is connected to, or null, and the name of its output. `output` may be
 * null. */
VSA_C_API const vsa_node* vsa_connection(const vsa_input* input, vsa_text* output);

/* A buffer. Its elements are adjacent in memory. Each has `components` numbers. */
typedef struct vsa_buffer {
  const void* data;           /* null for a count of 0 */
  uint64_t count;             /* the number of elements */
  uint64_t bytes;             /* the bytes of all elements */
  const char* element_type;   /* the type of one element: "Vec3f" */
  const char* component_type; /* the type of one number: "Float" */
  size_t components;          /* the number of numbers in one element */
  size_t component_bytes;     /* the bytes of one number */
} vsa_buffer;

/* The buffer of an input. Fills `out` and returns 1; returns 0 and changes nothing if the input has
 * no buffer. */
VSA_C_API int vsa_buffer_of(const vsa_input* input, vsa_buffer* out);
/* The buffer that vsa_load_buffer or vsa_load_buffer_from_text has read, in the same way. Returns 0
 * for any other reading. */
VSA_C_API int vsa_loaded_buffer(const vsa_reading* loaded, vsa_buffer* out);

#ifdef __cplusplus
}
#endif

#endif
