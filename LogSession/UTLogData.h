/**
 * @file
 * Usage tracking for desktop programs: the public interface of libLogSession.
 *
 * A host calls UTInitialize once, opens a session with UTStartSession, records values, events and
 * groups with its handle, and ends it with UTCloseSession. Each session becomes a usage document
 * in the user's log folder, which a separate agent program collects.
 *
 * Conventions:
 *
 *  1. Strings are NUL-terminated UTF-8. Bytes that are not valid UTF-8 are recorded as U+FFFD.
 *     The library copies what it needs before a call returns and keeps no pointer of the host.
 *  2. NULL and empty strings are allowed where a declaration says "optional": the document then
 *     holds "NOVALUE". Elsewhere they make the call fail. A NULL out pointer makes it fail, too.
 *  3. Limits are counted in bytes. A longer string is cut to its limit and the call goes on; the
 *     session's document reports the whole string in a "ValidationErrors" group. The same group
 *     reports a refused string, other than NULL.
 *  4. A "name" consists of ASCII letters, digits and underscores and begins with a letter. Every
 *     other byte is replaced by an underscore, and "VS_" is put in front of a name that does not
 *     begin with a letter.
 *  5. A session handle belongs to the library, from UTStartSession to UTCloseSession. Handles are
 *     checked before use: NULL, closed and foreign ones make a call do nothing.
 *  6. Every function may be called from any thread; calls run one after the other. The library
 *     starts no thread, opens no network connection and installs no signal handler.
 *  7. Failure shows as a NULL handle, the group id -1, or the opt-in value -1, and in the
 *     library's own log: a file VSLog.config in the folder of the host's bundle switches it on.
 *     No C++ exception derived from std::exception leaves a call.
 *  8. When a data call has returned, its record is in the file: nothing is buffered.
 */
#ifndef VISTRA_UTLOGDATA_H
#define VISTRA_UTLOGDATA_H

#include <stddef.h>

#if defined(__GNUC__)
#define UT_EXPORT __attribute__((visibility("default")))
#else
#define UT_EXPORT
#endif

#ifdef __cplusplus
class LogSession;
extern "C" {
#else
/** An open session. */
typedef struct LogSession LogSession;
#endif

/**
 * Sets the host's usage key, under which the user's opt-in is stored. Call it once, before
 * anything else; a later accepted call replaces what an earlier one set.
 *
 * @param pcUsagekey required, at most 64 bytes, no backslash. When it is refused nothing changes.
 * @param crashDetection bit 0 asks for crash detection: where an agent is there, each open session
 * has an empty marker file in the user's Logs folder, which UTCloseSession deletes and a crash
 * leaves.
 * @param pcAgentFolder the folder that holds the agent "LogTransport2.app"; NULL changes nothing.
 * Until a folder is named, the agent is looked for inside the host's own bundle.
 */
UT_EXPORT void UTInitialize(const char* pcUsagekey, unsigned char crashDetection,
                            const char* pcAgentFolder);

/**
 * Opens a session when collection is active, the agent is there, recording is enabled and the
 * user has consented: the opt-in is 1, or it is unknown and the serialization state is 0.
 *
 * @param session receives the handle, or NULL when no session is recorded.
 * @param pcAppFamily,pcAppName,pcAppversion required, at most 512 bytes each. Family and name are
 * a part of the document's file name: with a "/" in them, or more than about 150 bytes together,
 * no document can be made, and the session records nothing.
 * @param pcAppbuild,pcApplanguage optional, at most 512 bytes each.
 */
UT_EXPORT void UTStartSession(LogSession** session, const char* pcAppFamily, const char* pcAppName,
                              const char* pcAppversion, const char* pcAppbuild,
                              const char* pcApplanguage);

/**
 * Records a value of the session.
 *
 * @param session an open session, or NULL.
 * @param pcKey required, a name of at most 128 bytes.
 * @param pcValue optional, at most 512 bytes.
 */
UT_EXPORT void UTAddToSession(LogSession* session, const char* pcKey, const char* pcValue);

/**
 * Records an event.
 *
 * @param session an open session, or NULL.
 * @param pcCategory,pcSubCategory,pcEventName optional, at most 128 bytes each.
 * @param documentId identifies the host's document the event belongs to, or NULL. Only a hash of
 * it, salted for this user, is recorded. It ends at its first NUL byte or after documentIdLength
 * bytes, whichever comes first.
 * @param documentIdLength with a negative length nothing is recorded.
 */
UT_EXPORT void UTLogEvent(LogSession* session, const char* pcCategory, const char* pcSubCategory,
                          const char* pcEventName, unsigned char* documentId, int documentIdLength);

/**
 * Declares a group of values.
 *
 * @param session an open session, or NULL.
 * @param pcCategory,pcGroupName required, names of at most 128 bytes.
 * @param pcSubCategory optional, at most 128 bytes.
 * @param groupId receives the id for UTAddToGroup, or -1 when no group was declared.
 * @param documentId,documentIdLength as for UTLogEvent.
 */
UT_EXPORT void UTNewDataGroup(LogSession* session, const char* pcCategory,
                              const char* pcSubCategory, const char* pcGroupName, int* groupId,
                              unsigned char* documentId, int documentIdLength);

/**
 * Records a value of a group. An id that this session did not hand out is reported in the
 * document and the value is dropped.
 *
 * @param session an open session, or NULL.
 * @param groupId from UTNewDataGroup.
 * @param pcKey required, a name of at most 128 bytes.
 * @param pcValue optional, at most 512 bytes.
 */
UT_EXPORT void UTAddToGroup(LogSession* session, int groupId, const char* pcKey,
                            const char* pcValue);

/**
 * Ends the session: finishes its document, hands it to the agent, and sets the variable to NULL.
 * A variable that does not hold an open session is left as it is. When the user's consent was
 * withdrawn meanwhile, the documents in the log folder are deleted instead.
 *
 * @param session the variable that holds the session.
 */
UT_EXPORT void UTCloseSession(LogSession** session);

/**
 * Reads the stored opt-in for the key given to UTInitialize.
 *
 * @return 1 in, 0 out, -1 when it is unknown or could not be read.
 */
UT_EXPORT int UTGetOptIn(void);

/**
 * Stores the opt-in for the key given to UTInitialize.
 *
 * @param optIn 1 in, 0 out, -1 unknown, which also forgets the demographic answers; any other
 * value is refused.
 */
UT_EXPORT void UTSetOptIn(int optIn);

/**
 * Reads the stored opt-in for any key.
 *
 * @param pcUsagekey at most 64 bytes.
 * @return as UTGetOptIn.
 */
UT_EXPORT int UTOptInGet(const char* pcUsagekey);

/**
 * Stores the opt-in for any key.
 *
 * @param pcUsagekey at most 64 bytes.
 * @param optIn as for UTSetOptIn.
 */
UT_EXPORT void UTOptInSet(const char* pcUsagekey, int optIn);

/**
 * Reads a demographic answer that belongs to no product.
 *
 * @param pcKey required, at most 64 bytes.
 * @param buffer receives the answer, cut to the buffer's size, with a terminating NUL. When it is
 * NULL only the length is reported. A buffer of length 0 still receives the NUL.
 * @param length the buffer's size in bytes; receives the number of bytes written, or with a NULL
 * buffer the size that the whole answer needs, terminating NUL included. Unchanged on failure.
 */
UT_EXPORT void UTGetDemographic(const char* pcKey, char* buffer, unsigned long* length);

/**
 * Stores a demographic answer that belongs to no product.
 *
 * @param pcKey required, at most 64 bytes.
 * @param pcValue optional, at most 128 bytes.
 */
UT_EXPORT void UTSetDemographic(const char* pcKey, const char* pcValue);

/**
 * Reads a demographic answer of one product.
 *
 * @param productKey the product's usage key; NULL or empty means no product.
 * @param pcKey,buffer,length as for UTGetDemographic.
 */
UT_EXPORT void UTGetNonDefaultDemographic(const char* productKey, const char* pcKey, char* buffer,
                                          unsigned long* length);

/**
 * Stores a demographic answer of one product.
 *
 * @param productKey as for UTGetNonDefaultDemographic.
 * @param pcKey,pcValue as for UTSetDemographic.
 */
UT_EXPORT void UTSetNonDefaultDemographic(const char* productKey, const char* pcKey,
                                          const char* pcValue);

/**
 * Tells the library the product's serialization state, which is 2 after loading, and is not kept
 * when the program ends.
 *
 * @param serializationState 0 pre-release, 1 trial, 2 serialized, 3 shared component; other values
 * are ignored.
 * @return always 0.
 */
UT_EXPORT int UTSetSerializationState(int serializationState);

#ifdef __cplusplus
}
#endif

#endif
