/* The wireless requests of a BSS.
 *
 * The library's own numbers are not described in `private_args`: the wireless core would hand over a copy of the payload, as long as
 * the caller says, and write that back over the answer. Described are the four that iwpriv is to list and carry out. */
#include <linux/delay.h>
#include <linux/mm.h>
#include <linux/uaccess.h>
#include <linux/wireless.h>
#include <net/iw_handler.h>

#include "box/driver/bss_settings.h"
#include "box/driver/radio.h"
#include "box/driver/radio_state.h"
#include "box/driver/texts.h"
#include "sim/driver/answers.h"
#include "sim/driver/request_table.h"
#include "sim/driver/state.h"

enum {
  SET = SIOCIWFIRSTPRIV + 2,
  SHOW = SIOCIWFIRSTPRIV + 5,
  SURVEY = SIOCIWFIRSTPRIV + 13,
  STAT = SIOCIWFIRSTPRIV + 7,
  MOST_SET = 1024,
  MOST_SHOWN = 2047,
};

/* The lock is held. */
static int answer_locked(struct net_device* device, const RequestRow* row, struct iwreq* request, u8* data) {
  const struct interface* const own = netdev_priv(device);
  char* const settings = read_state(DRIVER_SETTINGS, device->name);
  Query query = {
      .request = request,
      .interface = device->name,
      .settings = settings,
      .radio = kBandTraits[own->radio->band].bss_prefix,
      .is_5g = own->radio->band == 1,
      .data = data,
      .length = request->u.data.length,
  };
  const int error = settings ? row->answer(&query) : EOPNOTSUPP;
  kvfree(settings);
  return error;
}

static int answer(struct net_device* device, const RequestRow* row, struct iwreq* request, u8* data) {
  int error;
  mutex_lock(&texts_lock);
  error = answer_locked(device, row, request, data);
  mutex_unlock(&texts_lock);
  return error;
}

/* What the request is told to do: it may wait, and fail. The wireless core holds the network's lock all the while, as with any slow
 * driver: nobody else can ask one or change an interface. The driver's own lock is free. Whoever is killed does not wait on. */
static int meet(unsigned long number, const struct iwreq* request, int* cut) {
  Fault fault = {.cut = -1};
  mutex_lock(&texts_lock);
  meet_fault(number, request, &fault);
  mutex_unlock(&texts_lock);
  *cut = fault.cut;
  if (fault.delay_ms && msleep_interruptible(fault.delay_ms)) return EINTR;
  return fault.error;
}

/* As much of the answer as is to reach the caller; what is cut has the length field say so. */
static size_t shown_of(size_t reply, int cut, union iwreq_data* data) {
  if (cut < 0 || cut >= reply) return reply;
  data->data.length = cut;
  return cut;
}

static void fill(struct iwreq* request, const struct net_device* device, const union iwreq_data* data) {
  memset(request, 0, sizeof *request);
  strscpy(request->ifr_name, device->name, sizeof request->ifr_name);
  request->u = *data;
}

static int answer_standard(struct net_device* device, struct iw_request_info* info, union iwreq_data* data,
                           char* extra) {
  struct iwreq request;
  const RequestRow* const row = find_row(info->cmd, 0);
  int cut;
  int error;
  fill(&request, device, data);
  error = meet(info->cmd, &request, &cut);
  if (!error) error = row ? answer(device, row, &request, NULL) : EOPNOTSUPP;
  if (!error) *data = request.u;
  return -error;
}

/* Answers into a buffer of the driver's own: the caller's memory is touched without the lock. */
static int answer_private(struct net_device* device, struct iw_request_info* info, union iwreq_data* data,
                          char* extra) {
  struct iwreq request;
  const RequestRow* const row = find_row(info->cmd, data->data.flags);
  size_t taken;
  u8* own;
  int cut;
  int error;
  fill(&request, device, data);
  error = meet(info->cmd, &request, &cut);
  if (error) return -error;
  if (!row) return -EOPNOTSUPP;
  if (data->data.length < row->least_length) return -EINVAL;
  taken = row->reply ? row->least_length : data->data.length;
  own = kvzalloc(max_t(size_t, taken, row->reply) + 1, GFP_KERNEL);
  if (!own) return -ENOMEM;
  error = copy_from_user(own, data->data.pointer, taken) ? EFAULT : answer(device, row, &request, own);
  if (!error && copy_to_user(data->data.pointer, own, shown_of(row->reply, cut, data))) error = EFAULT;
  kvfree(own);
  return -error;
}

/* Hands a text to iwpriv, as much of it as iwpriv has room for. Takes it over. */
static int hand_over(char* text, union iwreq_data* data, char* extra) {
  size_t length;
  if (!text) return -ENOMEM;
  length = min_t(size_t, strlen(text), MOST_SHOWN - 1);
  memcpy(extra, text, length);
  extra[length] = '\0';
  data->data.length = length + 1;
  kvfree(text);
  return 0;
}

static int private_set(struct net_device* device, struct iw_request_info* info, union iwreq_data* data, char* extra) {
  const struct interface* const own = netdev_priv(device);
  const size_t length = min_t(size_t, data->data.length, MOST_SET);
  char* const argument = kvmalloc(length + 1, GFP_KERNEL);
  int error;
  if (!argument) return -ENOMEM;
  memcpy(argument, extra, length);
  argument[length] = '\0';
  mutex_lock(&texts_lock);
  error = set_private(own->radio->band, device->name, own->radio->bss_count, argument);
  mutex_unlock(&texts_lock);
  kvfree(argument);
  return -error;
}

static void add_payload(Text* text, const char* interface, const char* kind) {
  char name[40];
  char* bytes;
  snprintf(name, sizeof name, "%s.%s", interface, kind);
  bytes = read_state(DRIVER_PAYLOADS, name);
  if (bytes && *bytes) {
    add_text(text, kind);
    add_text(text, "=");
    add_text(text, bytes);
    add_text(text, "\n");
  }
  kvfree(bytes);
}

static int private_show(struct net_device* device, struct iw_request_info* info, union iwreq_data* data, char* extra) {
  Text text = {};
  char* settings;
  add_text(&text, "\n");
  mutex_lock(&texts_lock);
  settings = read_state(DRIVER_SETTINGS, device->name);
  add_plain_settings(&text, settings);
  add_payload(&text, device->name, "OuiFilter");
  add_payload(&text, device->name, "ProbeResponse");
  mutex_unlock(&texts_lock);
  kvfree(settings);
  return hand_over(finish_text(&text), data, extra);
}

static int private_survey(struct net_device* device, struct iw_request_info* info, union iwreq_data* data,
                          char* extra) {
  const struct interface* const own = netdev_priv(device);
  char* survey;
  mutex_lock(&texts_lock);
  survey = site_survey(own->radio->band);
  mutex_unlock(&texts_lock);
  return hand_over(survey, data, extra);
}

static int private_stat(struct net_device* device, struct iw_request_info* info, union iwreq_data* data, char* extra) {
  struct iwreq request;
  const RequestRow* const row = find_row(SIOCIWFIRSTPRIV + 9, 0);
  struct {
    u32 stations;
    s32 noise;
    u64 counter[6];
  } reply = {};
  char* const text = kvmalloc(MOST_SHOWN, GFP_KERNEL);
  int error;
  fill(&request, device, data);
  error = answer(device, row, &request, (u8*)&reply);
  if (!text || error) {
    kvfree(text);
    return text ? -error : -ENOMEM;
  }
  snprintf(text, MOST_SHOWN,
           "\nStations        = %u\nNoise           = %d dBm\nTx packets      = %llu\nRx packets      = %llu\n"
           "Tx bytes        = %llu\nRx bytes        = %llu\nTx errors       = %llu\nRx errors       = %llu\n",
           reply.stations, reply.noise, reply.counter[0], reply.counter[1], reply.counter[2], reply.counter[3],
           reply.counter[4], reply.counter[5]);
  return hand_over(text, data, extra);
}

static const iw_handler kStandard[] = {
    IW_HANDLER(SIOCGIWNAME, answer_standard),
    IW_HANDLER(SIOCGIWFREQ, answer_standard),
};

static const iw_handler kPrivate[] = {
    [0 ... SIOCIWLASTPRIV - SIOCIWFIRSTPRIV] = answer_private,
    [SET - SIOCIWFIRSTPRIV] = private_set,
    [SHOW - SIOCIWFIRSTPRIV] = private_show,
    [SURVEY - SIOCIWFIRSTPRIV] = private_survey,
    [STAT - SIOCIWFIRSTPRIV] = private_stat,
};

static const struct iw_priv_args kDescribed[] = {
    {SET, IW_PRIV_TYPE_CHAR | MOST_SET, 0, "set"},
    {SHOW, 0, IW_PRIV_TYPE_CHAR | MOST_SHOWN, "show"},
    {SURVEY, 0, IW_PRIV_TYPE_CHAR | MOST_SHOWN, "get_site_survey"},
    {STAT, 0, IW_PRIV_TYPE_CHAR | MOST_SHOWN, "stat"},
};

const struct iw_handler_def radio_requests = {
    .standard = kStandard,
    .num_standard = ARRAY_SIZE(kStandard),
    .private = kPrivate,
    .num_private = ARRAY_SIZE(kPrivate),
    .private_args = kDescribed,
    .num_private_args = ARRAY_SIZE(kDescribed),
};
