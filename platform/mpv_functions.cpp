// The libmpv functions the engine calls, found in libmpv when the first
// engine starts instead of linked with the program: a window that plays
// nothing never opens libmpv and the libraries it needs. Without libmpv an
// engine cannot be created, and says so.
#include <mpv/client.h>
#include <mpv/render.h>

#include <string>

#include "platform/shared_library.h"

namespace {

using velmora::Find_Function;
using velmora::SharedLibrary;

SharedLibrary& Mpv() {
    // The soname carries the major version of the client API built against.
    static SharedLibrary library("libmpv.so." + std::to_string(MPV_CLIENT_API_VERSION >> 16));
    return library;
}

// The library's function of the same name, found once.
template <auto& Function>
auto* Real(const char* name) {
    static auto* const found = Find_Function<std::remove_reference_t<decltype(Function)>>(Mpv(), name);
    return found;
}
#define VELMORA_REAL(name) Real<name>(#name)

}  // namespace

extern "C" {

// Every other function is called with the instance this made: only here
// can the library, or a function of it, be missing.
mpv_handle* mpv_create(void) {
    const bool whole = VELMORA_REAL(mpv_initialize) && VELMORA_REAL(mpv_terminate_destroy) &&
                       VELMORA_REAL(mpv_set_option_string) && VELMORA_REAL(mpv_command) &&
                       VELMORA_REAL(mpv_command_ret) && VELMORA_REAL(mpv_free_node_contents) &&
                       VELMORA_REAL(mpv_get_property) && VELMORA_REAL(mpv_set_property) &&
                       VELMORA_REAL(mpv_observe_property) && VELMORA_REAL(mpv_wait_event) &&
                       VELMORA_REAL(mpv_set_wakeup_callback) && VELMORA_REAL(mpv_error_string) &&
                       VELMORA_REAL(mpv_command_async) && VELMORA_REAL(mpv_set_property_async);
    auto* real = VELMORA_REAL(mpv_create);
    return whole && real != nullptr ? real() : nullptr;
}

const char* mpv_error_string(int error) {
    auto* real = VELMORA_REAL(mpv_error_string);
    return real != nullptr ? real(error) : "libmpv cannot be opened";
}

int mpv_initialize(mpv_handle* ctx) { return VELMORA_REAL(mpv_initialize)(ctx); }

void mpv_terminate_destroy(mpv_handle* ctx) { VELMORA_REAL(mpv_terminate_destroy)(ctx); }

int mpv_set_option_string(mpv_handle* ctx, const char* name, const char* data) {
    return VELMORA_REAL(mpv_set_option_string)(ctx, name, data);
}

int mpv_command(mpv_handle* ctx, const char** args) { return VELMORA_REAL(mpv_command)(ctx, args); }

int mpv_command_ret(mpv_handle* ctx, const char** args, mpv_node* result) {
    return VELMORA_REAL(mpv_command_ret)(ctx, args, result);
}

void mpv_free_node_contents(mpv_node* node) { VELMORA_REAL(mpv_free_node_contents)(node); }

int mpv_get_property(mpv_handle* ctx, const char* name, mpv_format format, void* data) {
    return VELMORA_REAL(mpv_get_property)(ctx, name, format, data);
}

int mpv_set_property(mpv_handle* ctx, const char* name, mpv_format format, void* data) {
    return VELMORA_REAL(mpv_set_property)(ctx, name, format, data);
}

int mpv_observe_property(mpv_handle* mpv, uint64_t reply_userdata, const char* name, mpv_format format) {
    return VELMORA_REAL(mpv_observe_property)(mpv, reply_userdata, name, format);
}

int mpv_command_async(mpv_handle* ctx, uint64_t reply_userdata, const char** args) {
    return VELMORA_REAL(mpv_command_async)(ctx, reply_userdata, args);
}

int mpv_set_property_async(mpv_handle* ctx, uint64_t reply_userdata, const char* name, mpv_format format,
                           void* data) {
    return VELMORA_REAL(mpv_set_property_async)(ctx, reply_userdata, name, format, data);
}

mpv_event* mpv_wait_event(mpv_handle* ctx, double timeout) { return VELMORA_REAL(mpv_wait_event)(ctx, timeout); }

void mpv_set_wakeup_callback(mpv_handle* ctx, void (*cb)(void* d), void* d) {
    VELMORA_REAL(mpv_set_wakeup_callback)(ctx, cb, d);
}

// The render API draws the picture into the program's own widgets. A
// library without it leaves the picture out; the sound plays all the same.
int mpv_render_context_create(mpv_render_context** res, mpv_handle* mpv, mpv_render_param* params) {
    auto* real = VELMORA_REAL(mpv_render_context_create);
    const bool whole = VELMORA_REAL(mpv_render_context_set_update_callback) &&
                       VELMORA_REAL(mpv_render_context_update) && VELMORA_REAL(mpv_render_context_render) &&
                       VELMORA_REAL(mpv_render_context_report_swap) && VELMORA_REAL(mpv_render_context_free);
    return whole && real != nullptr ? real(res, mpv, params) : MPV_ERROR_UNSUPPORTED;
}

void mpv_render_context_set_update_callback(mpv_render_context* ctx, mpv_render_update_fn callback,
                                            void* callback_ctx) {
    VELMORA_REAL(mpv_render_context_set_update_callback)(ctx, callback, callback_ctx);
}

uint64_t mpv_render_context_update(mpv_render_context* ctx) { return VELMORA_REAL(mpv_render_context_update)(ctx); }

int mpv_render_context_render(mpv_render_context* ctx, mpv_render_param* params) {
    return VELMORA_REAL(mpv_render_context_render)(ctx, params);
}

void mpv_render_context_report_swap(mpv_render_context* ctx) { VELMORA_REAL(mpv_render_context_report_swap)(ctx); }

void mpv_render_context_free(mpv_render_context* ctx) { VELMORA_REAL(mpv_render_context_free)(ctx); }

}  // extern "C"
