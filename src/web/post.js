// Runs an entry point of the page's core with its arguments: {value} when it has returned, or
// {pending}, a promise of the value, when it waits for the user or gives the browser time.
// Only one may wait at a time: the page runs its handlers one after the other.
Module['webRun'] = function(entry, args) {
  var value = entry.apply(null, args);
  if (Asyncify.currData) return {pending: Asyncify.whenDone()};
  return {value: value};
};
