// A parameter that is a data-model object besides. The operations that it adds are the host's; they
// have fixed answers here.
#pragma once

#include "zdm/parameters/IZParameter.h"

struct ZDM_INTERFACE IZDMParameter : IZParameter {
  virtual void* Reserved54() { return nullptr; }  // 54
  virtual void Reserved55() {}                    // 55
  virtual bool Reserved56() { return true; }      // 56
  virtual void Reserved57() {}                    // 57
  virtual void Reserved58() {}                    // 58
  virtual void Reserved59() {}                    // 59
  virtual bool Reserved60() { return true; }      // 60
  virtual void Reserved61() {}                    // 61
  virtual bool Reserved62() { return true; }      // 62
  virtual void Reserved63() {}                    // 63
  virtual bool Reserved64() { return true; }      // 64
  virtual void Reserved65() {}                    // 65
};
