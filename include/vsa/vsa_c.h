/* The reader for C, and for languages that call C functions: read a text, see how it went, walk the
 * scene.
 *
 *   vsa_reading* reading = vsa_read_file("scene.vsa", NULL);
 *   double power;
 *   if (vsa_real(vsa_find_input(vsa_find_node(reading, "sun"), "power"), &power)) printf("%g\n",
 * power); vsa_free(reading);
 *
 * Handles are opaque pointers. A null handle is something that is missing: every function takes it,
 * and answers null, 0 or an empty text. No exception leaves a function. Everything that a function
 * returns belongs to the reading, is not changed by anything, and is valid until vsa_free. Any
 * number of threads may read, each with its own reading, and look at one reading together. */
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
  VSA_STOPPED_BY_ERROR, /* an error of the text ended it; what was applied before stays */
  VSA_CUT_OFF,    /* the text ends inside a statement, a string or a list, or at a byte 0xFF */
  VSA_UNREADABLE, /* the file could not be opened or read to its end */
  VSA_CANCELLED,  /* the progress function returned 0 */
  VSA_OVER_LIMIT, /* a limit of the options was met */
  VSA_OUT_OF_MEMORY,
  VSA_HOST_EXCEPTION /* the progress function threw a C++ exception */
} vsa_status;

/* The value of a limit that bounds nothing. */
#define VSA_UNLIMITED UINT64_MAX

/* Options of one reading. Call vsa_options_init first. */
typedef struct vsa_options {
  size_t size;               /* bytes of this struct, set by vsa_options_init */
  uint64_t text_bytes;       /* limits; all VSA_UNLIMITED at first. Of the text */
  uint64_t memory_bytes;     /* in all; unlimited stands for 64 MiB and 100 times the text */
  uint64_t buffer_bytes;     /* of one buffer */
  uint64_t nodes;            /* that the text makes */
  uint64_t elements;         /* of arrays that the text makes */
  uint64_t depth;            /* inputs on one path */
  uint64_t kept_diagnostics; /* how many are kept; 10000 at first. The others are counted */
  int skips_buffers;         /* not 0: buffers get their type and stay empty */
  /* Called with `progress_data` at most every few milliseconds; 0 ends the reading. `total` is
   * VSA_UNLIMITED while the size of the text is not known. Null: not called. */
  int (*progress)(void* progress_data, uint64_t bytes_read, uint64_t total);
  void* progress_data;
} vsa_options;

/* Sets the defaults. Does nothing with a null pointer. */
VSA_C_API void vsa_options_init(vsa_options* options);

/* Reads the file at `path`, or `length` bytes at `text`. Null options are the defaults. Null paths
 * and texts are unreadable. Returns a reading whatever happened; null only if there is no memory
 * for it, or if `options` were not initialised. */
VSA_C_API vsa_reading* vsa_read_file(const char* path, const vsa_options* options);
VSA_C_API vsa_reading* vsa_read_text(const char* text, size_t length, const vsa_options* options);
/* Frees the reading, its scene and everything that was returned from it. Null is allowed. */
VSA_C_API void vsa_free(vsa_reading* reading);

/* VSA_OUT_OF_MEMORY for a null reading. */
VSA_C_API vsa_status vsa_reading_status(const vsa_reading* reading);
/* "complete", "stopped-by-error" and so on; "unknown" for a number that is none. */
VSA_C_API const char* vsa_status_name(vsa_status status);
/* Why the reading ended, for people; empty after a complete one. */
VSA_C_API vsa_text vsa_reading_message(const vsa_reading* reading);

/* A place in the text. The offset counts bytes from 0, line and column from 1, columns in bytes. */
typedef struct vsa_position {
  uint64_t offset, line, column;
} vsa_position;

/* A problem that was found. */
typedef struct vsa_diagnostic {
  const char* id;    /* stable: "too-few-elements" */
  int is_error;      /* 0: a warning */
  int ended_reading; /* not 0: nothing was read after it */
  vsa_text message;
  vsa_text input_path; /* the input concerned, such as "worktop.points[3]"; may be empty */
  vsa_position begin;  /* the first byte to blame */
  vsa_position end;    /* one past the last */
} vsa_diagnostic;

/* How many diagnostics were kept, and how many were found. */
VSA_C_API size_t vsa_diagnostic_count(const vsa_reading* reading);
VSA_C_API uint64_t vsa_diagnostics_found(const vsa_reading* reading);
/* Fills `out` and returns 1; returns 0 and changes nothing if `index` is not below the count. */
VSA_C_API int vsa_diagnostic_at(const vsa_reading* reading, size_t index, vsa_diagnostic* out);

/* --- the scene --- */

/* The header of the file. Version 1 if the text names none. */
VSA_C_API uint64_t vsa_file_version(const vsa_reading* reading);
VSA_C_API vsa_text vsa_file_time(const vsa_reading* reading);
VSA_C_API size_t vsa_comment_count(const vsa_reading* reading);
VSA_C_API vsa_text vsa_comment_at(const vsa_reading* reading, size_t index);

/* The nodes in the order of their creation: the first, and the one after a node, or null. */
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

/* Empty for an element of an array. */
VSA_C_API vsa_text vsa_input_name(const vsa_input* input);
/* Writes the path, such as "rig.bones[2].at", and a NUL into `capacity` bytes, cut off if need be.
 * Returns its length without the NUL. */
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

/* VSA_NULL for a missing input and for one without a value. */
VSA_C_API vsa_type vsa_input_type(const vsa_input* input);
/* "Null", "Bool" and so on. */
VSA_C_API const char* vsa_type_name(vsa_type type);

/* The value. Each fills `out` and returns 1 for an input of its type, and returns 0 and changes
 * nothing for any other. Integers are taken for the other integer type and for a real where they
 * fit. */
VSA_C_API int vsa_bool(const vsa_input* input, int* out);
VSA_C_API int vsa_int(const vsa_input* input, int64_t* out);
VSA_C_API int vsa_uint(const vsa_input* input, uint64_t* out);
VSA_C_API int vsa_real(const vsa_input* input, double* out);
/* The characters also end in a NUL. */
VSA_C_API int vsa_string(const vsa_input* input, vsa_text* out);
/* Of a vector, position, quaternion, colour or matrix: its numbers. Returns how many: 2 to 16, or
 * 0. */
VSA_C_API size_t vsa_components(const vsa_input* input, const double** out);
/* The node that the input refers to, or null. */
VSA_C_API const vsa_node* vsa_reference(const vsa_input* input);
/* The node that the input is connected to, or null, and the name of its output. `output` may be
 * null. */
VSA_C_API const vsa_node* vsa_connection(const vsa_input* input, vsa_text* output);

/* A buffer. Its elements lie one after another, each of `components` numbers. */
typedef struct vsa_buffer {
  const void* data;           /* null for a count of 0 */
  uint64_t count;             /* elements */
  uint64_t bytes;             /* in all */
  const char* element_type;   /* "Vec3f" */
  const char* component_type; /* "Float": of one number */
  size_t components;          /* numbers of one element */
  size_t component_bytes;     /* of one number */
} vsa_buffer;

VSA_C_API int vsa_buffer_of(const vsa_input* input, vsa_buffer* out);

#ifdef __cplusplus
}
#endif

#endif
