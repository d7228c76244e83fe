include_guard()
