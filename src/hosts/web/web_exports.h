// The functions that the page calls.
// They reach the one host of the page; while there is none they do nothing.
#pragma once

class WebHost;

/// The host lives as long as the page.
void setExportedWebHost(WebHost* host);
