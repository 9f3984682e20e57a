#pragma once

/// The main dispatch queue, served by the main thread's run loop in its common modes.

extern "C" {

typedef struct dispatch_queue_s *dispatch_queue_t;
typedef void (*dispatch_function_t)(void *context);

/// The queue of the main thread.
dispatch_queue_t dispatch_get_main_queue(void);

/// Queues the work and returns at once; work runs in the order in which it was queued. Any thread.
void dispatch_async_f(dispatch_queue_t queue, void *context, dispatch_function_t work);

} // extern "C"
