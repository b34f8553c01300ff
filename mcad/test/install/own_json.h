// The host's own JSON documents.
#pragma once

/// Makes a document and reads it; false if it has not become what it should.
bool ownDocumentWorks();
/// How often the pools of the host's documents have grown.
int ownPoolGrowths();
