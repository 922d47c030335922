# shellcheck shell=bash
# Rows whose names are made of what menus take for marks.
# shellcheck disable=SC2034 # scenes use it
kOddNames=(a_b_c __main__ '★ vLLM: R&D &&' '★ vLLM: <b>bold <i>' '★ vLLM: 50%s off%%')
play_odd_names() {
  local name others=("${started[@]}")
  for name in a_b_c __main__; do
    start play_process --seconds 600 --memory 1900 -- "$name"
  done
  for name in 'R&D_&&' '<b>bold_<i>' '50%s_off%%'; do
    start play_process --seconds 600 --memory 130 -- vllm serve "$name"
  done
  odd=("${started[@]:0:${#started[@]}-${#others[@]}}")
}
end_odd_names() { kill "${odd[@]}"; }
