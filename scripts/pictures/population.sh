# shellcheck shell=bash
# What runs on the machine in the pictures. Its sizes are MiB; where there is too little
# memory for them they shrink, all by the same measure.

available=$(awk '/^MemAvailable:/ { print int($2 / 1024) }' /proc/meminfo)
kFigures=13552  # the sum of what follows
percent=$((available * 50 / kFigures))
[ "$percent" -le 100 ] || percent=100

# play USER MEMORY COMMAND...: returns once it keeps the memory busy.
play() {
  local user="$1" memory=$(($2 * percent / 100))
  shift 2
  local who=()
  [ "$user" = root ] || who=(--user "$(id -u "$user")")
  exec 7< <(exec play_process --seconds 3600 --memory "$memory" "${who[@]}" -- "$@")
  read -r _ <&7
  exec 7<&-
}

PATH="/tmp/bin:$PATH"
play ollama 4100 /usr/local/bin/ollama serve
play ada 3350 python3 train_lora.py --model_name meta-llama/Llama-3.1-8B --lora_r 16
play ada 2260 vllm serve mistralai/Mistral-7B-Instruct-v0.3 --port 8000
play ada 1680 /opt/llama.cpp/llama-server -m /home/ada/models/Qwen2.5-Coder-7B.gguf --port 8080
play ada 920 /usr/lib/firefox/firefox
play ada 540 /usr/share/code/code
play ada 390 jupyter-lab --no-browser
play ada 132 python3 -m hermes_cli.main agent
play ada 96 mcp-server-filesystem /home/ada/notes
play ada 84 python3 -m mcp_server_git --repository /home/ada/src
