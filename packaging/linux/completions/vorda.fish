# What fish offers after "vorda".
complete -c vorda -f
function __vorda_has_no_option
    not __fish_contains_opt help version text json bar watch
end
complete -c vorda -n __vorda_has_no_option -l help -d 'print what options there are'
complete -c vorda -n __vorda_has_no_option -l version -d 'print the version'
complete -c vorda -n __vorda_has_no_option -l text -d 'print the menu once, for people to read'
complete -c vorda -n __vorda_has_no_option -l json -d 'print all that was found out, for programs'
complete -c vorda -n __vorda_has_no_option -l bar -d 'print a line of JSON for a status bar'
complete -c vorda -n '__fish_contains_opt bar; and not __fish_contains_opt watch' -l watch -d 'a line every 5 seconds'
