// Result codes, access rights and the registry's numbers, under Windows' names and with Windows' values.
// Part of windows_types.h, which is the header to include.
#pragma once

// Result codes ------------------------------------------------------------------------------------

#define NO_ERROR 0
#define ERROR_SUCCESS 0
#define ERROR_INVALID_FUNCTION 1
#define ERROR_FILE_NOT_FOUND 2
#define ERROR_PATH_NOT_FOUND 3
#define ERROR_TOO_MANY_OPEN_FILES 4
#define ERROR_ACCESS_DENIED 5
#define ERROR_INVALID_HANDLE 6
#define ERROR_NOT_ENOUGH_MEMORY 8
#define ERROR_OUTOFMEMORY 14
#define ERROR_INVALID_DRIVE 15
#define ERROR_NO_MORE_FILES 18
#define ERROR_NOT_SAME_DEVICE 17
#define ERROR_WRITE_PROTECT 19
#define ERROR_NOT_READY 21
#define ERROR_GEN_FAILURE 31
#define ERROR_SHARING_VIOLATION 32
#define ERROR_HANDLE_DISK_FULL 39
#define ERROR_NOT_SUPPORTED 50
#define ERROR_BAD_NETPATH 53
#define ERROR_BAD_NET_NAME 67
#define ERROR_FILE_EXISTS 80
#define ERROR_INVALID_PARAMETER 87
#define ERROR_CALL_NOT_IMPLEMENTED 120
#define ERROR_INSUFFICIENT_BUFFER 122
#define ERROR_INVALID_NAME 123
#define ERROR_MOD_NOT_FOUND 126
#define ERROR_PROC_NOT_FOUND 127
#define ERROR_NEGATIVE_SEEK 131
#define ERROR_DIR_NOT_EMPTY 145
#define ERROR_BAD_PATHNAME 161
#define ERROR_ALREADY_EXISTS 183
#define ERROR_BAD_EXE_FORMAT 193
#define ERROR_FILENAME_EXCED_RANGE 206
#define ERROR_MORE_DATA 234
#define ERROR_NO_MORE_ITEMS 259
#define ERROR_DIRECTORY 267
#define ERROR_NOACCESS 998
#define ERROR_KEY_DELETED 1018
#define ERROR_NO_UNICODE_TRANSLATION 1113
#define ERROR_CANT_RESOLVE_FILENAME 1921
#define ERROR_NOT_ALL_ASSIGNED 1300
#define ERROR_NO_SUCH_PRIVILEGE 1313
#define ERROR_PRIVILEGE_NOT_HELD 1314

// Access rights and the registry ------------------------------------------------------------------

#define MAXIMUM_ALLOWED 0x02000000u
#define GENERIC_READ 0x80000000u
#define GENERIC_WRITE 0x40000000u
#define GENERIC_EXECUTE 0x20000000u
#define GENERIC_ALL 0x10000000u

#define BROMVALE_PREDEFINED_KEY(number) \
    (reinterpret_cast<HKEY>(static_cast<std::intptr_t>(static_cast<std::int32_t>(number))))
#define HKEY_CLASSES_ROOT BROMVALE_PREDEFINED_KEY(0x80000000u)
#define HKEY_CURRENT_USER BROMVALE_PREDEFINED_KEY(0x80000001u)
#define HKEY_LOCAL_MACHINE BROMVALE_PREDEFINED_KEY(0x80000002u)
#define HKEY_USERS BROMVALE_PREDEFINED_KEY(0x80000003u)
#define HKEY_PERFORMANCE_DATA BROMVALE_PREDEFINED_KEY(0x80000004u)
#define HKEY_CURRENT_CONFIG BROMVALE_PREDEFINED_KEY(0x80000005u)
#define HKEY_DYN_DATA BROMVALE_PREDEFINED_KEY(0x80000006u)

#define KEY_QUERY_VALUE 0x0001u
#define KEY_SET_VALUE 0x0002u
#define KEY_CREATE_SUB_KEY 0x0004u
#define KEY_ENUMERATE_SUB_KEYS 0x0008u
#define DELETE 0x10000u
#define READ_CONTROL 0x20000u
#define SYNCHRONIZE 0x100000u
#define KEY_READ 0x20019u
#define KEY_WRITE 0x20006u
#define KEY_EXECUTE 0x20019u
#define KEY_ALL_ACCESS 0xF003Fu

#define REG_CREATED_NEW_KEY 1u
#define REG_OPENED_EXISTING_KEY 2u

#define REG_NONE 0u
#define REG_SZ 1u
#define REG_EXPAND_SZ 2u
#define REG_BINARY 3u
#define REG_DWORD 4u
#define REG_MULTI_SZ 7u

// Keys --------------------------------------------------------------------------------------------

#define VK_TAB 0x09
#define VK_CLEAR 0x0C
#define VK_RETURN 0x0D
#define VK_ESCAPE 0x1B
#define VK_EXECUTE 0x2B
#define VK_DELETE 0x2E
#define VK_F4 0x73
#define VK_F5 0x74
#define VK_F6 0x75
#define VK_F7 0x76
#define VK_F8 0x77
