#pragma once

// Every room is built with hidden visibility; a public class carries its room's mark.
#define VEXPLATFORM_EXPORT __attribute__((visibility("default")))
#define VEXGE_EXPORT __attribute__((visibility("default")))
#define VEXDB_EXPORT __attribute__((visibility("default")))
#define VEXQT_EXPORT __attribute__((visibility("default")))
